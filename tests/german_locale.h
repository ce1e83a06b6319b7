#pragma once

#include "tests/temporary_folder.h"

#include <locale>
#include <optional>
#include <string>

/// Puts the process under German rules for its lifetime: a decimal comma and grouping by full stops.
///
/// The C locale is de_DE.UTF-8, as installed or else made by localedef in a folder of its own; where neither
/// can be had, cLocaleIsGerman() is false and the C locale stays. The C++ locale is German in any case, by a
/// facet of ours. One at a time.
class GermanLocale {
public:
    GermanLocale();
    ~GermanLocale();
    GermanLocale(const GermanLocale&) = delete;
    GermanLocale& operator=(const GermanLocale&) = delete;

    bool cLocaleIsGerman() const { return mCLocaleIsGerman; }

private:
    bool makeLocale();

    std::optional<TemporaryFolder> mFolder; // of the locale that localedef made
    std::string mOldCLocale;
    std::locale mOldLocale;
    bool mCLocaleIsGerman;
};
