#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <zip.h>

#include "tests/temporary_folder.h"

/// The bytes of an archive with these names and contents, packed; with a password it is locked.
inline std::string ZipBytes(const std::vector<std::pair<std::string, std::string>>& entries,
                            const char* password = nullptr) {
  const TemporaryFolder folder;
  zip_t* const archive = zip_open(folder.PathTo("a.zip").c_str(), ZIP_CREATE | ZIP_EXCL, nullptr);
  for (const auto& [name, content] : entries) {
    const zip_int64_t index =
        name.ends_with('/')
            ? zip_dir_add(archive, name.c_str(), ZIP_FL_ENC_UTF_8)
            : zip_file_add(archive, name.c_str(),
                           zip_source_buffer(archive, content.data(), content.size(), 0),
                           ZIP_FL_ENC_UTF_8);
    EXPECT_GE(index, 0) << name;
    if (password) {
      EXPECT_EQ(zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), ZIP_EM_AES_256,
                                        password),
                0);
    }
  }
  EXPECT_EQ(zip_close(archive), 0);
  return folder.Get("a.zip");
}
