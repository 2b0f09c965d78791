#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

/// The converter with settings and data of its own.
class ServiceHome : public testing::Test {
 protected:
  ProgramResult Run(const std::vector<std::string>& arguments,
                    const std::string& environment = "LC_ALL=C") const {
    return RunConverter(arguments,
                        environment + " XDG_CONFIG_HOME=" + Home() + " XDG_DATA_HOME=" + Home());
  }
  std::string Home() const { return m_home.Path().string(); }
  void Set(const std::vector<std::string>& assignments) const {
    std::vector<std::string> arguments;
    for (const std::string& assignment : assignments)
      arguments.insert(arguments.end(), {"--set", assignment});
    const ProgramResult result = Run(arguments);
    ASSERT_EQ(result.status, 0) << result.errors;
    ASSERT_EQ(result.output + result.errors, "");
  }

  const TemporaryFolder folder;  ///< for the files of the test

 private:
  TemporaryFolder m_home;
};
