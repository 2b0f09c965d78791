#pragma once

#include <memory>

#include "platform/settings_backend.h"

/// Settings in an SQLite file, which is made by the first write (mode 0600) and opened by the first
/// operation that needs it. Several programs may use it at once; a program that is killed leaves
/// the state before its save or the one after it. A damaged file's content is put aside under
/// another name (`TakeSettingsNews`), and the settings are empty. A file of a later version
/// of the program is left alone: all operations give 50 then.
std::unique_ptr<SettingsBackend> OpenSqliteSettings(const WideString& path);
