#pragma once

#include <glib.h>
#include <memory>
#include <string>

namespace platform {

struct KeyFileEnd {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileEnd>;

/// A file of groups, keys and values, its lists parted by commas; null when it cannot be read or is larger
/// than a megabyte.
KeyFile readKeyFile(const std::string& path);

/// Empty when there is no such value.
std::string stringIn(GKeyFile& file, const char* group, const char* key);

}
