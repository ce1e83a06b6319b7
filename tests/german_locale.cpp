#include "tests/german_locale.h"

#include "tests/source_folder.h"

#include <clocale>
#include <cstdlib>

namespace {

constexpr const char* kInstalled = "de_DE.UTF-8";
constexpr const char* kOwn = "german";

class GermanNumbers : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

}

GermanLocale::GermanLocale()
    : mOldCLocale(std::setlocale(LC_ALL, nullptr))
    , mOldLocale(std::locale::global(std::locale(std::locale::classic(), new GermanNumbers)))
    , mCLocaleIsGerman(std::setlocale(LC_ALL, kInstalled) != nullptr)
{
    if (!mCLocaleIsGerman && makeLocale())
        mCLocaleIsGerman = std::setlocale(LC_ALL, kOwn) != nullptr;
}

GermanLocale::~GermanLocale()
{
    std::locale::global(mOldLocale);
    std::setlocale(LC_ALL, mOldCLocale.c_str());
    if (mFolder)
        unsetenv("LOCPATH");
}

bool GermanLocale::makeLocale()
{
    const std::string folder = mFolder.emplace().path();
    std::string command = "localedef -c -i '" + inSourceFolder("tests/german_locale.txt") + "' -f UTF-8 ";
    command += "'" + folder + "/" + kOwn + "' >/dev/null 2>&1";
    // It warns, and says so by its status; only setlocale can tell whether the locale is usable.
    (void)std::system(command.c_str());
    return setenv("LOCPATH", folder.c_str(), 1) == 0;
}
