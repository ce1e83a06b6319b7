#include "tests/source_folder.h"

std::string inSourceFolder(const std::string& name)
{
    return LUM_SOURCE_FOLDER "/" + name;
}
