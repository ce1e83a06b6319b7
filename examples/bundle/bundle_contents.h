#pragma once

#include "LUMFoundation/LUMDocumentBundle.h"

#include <functional>
#include <string>
#include <vector>

/// What is in a bundle, for a person or a check. An empty domain is the document's own.
struct BundleContents {
    struct Resource {
        std::string path; ///< Within the area of the domain.
        std::string file; ///< Where it is.
        std::uint64_t size; ///< 0 for one that is not reached.
    };
    /// Is told where something cannot be looked at, and why.
    using Report = std::function<void(const std::string& where, const std::string& what)>;
    static void ignore(const std::string& where, const std::string& what);

    static std::vector<std::string> domains(
        const LUMDocumentBundle& bundle, const Report& report = ignore); ///< The document's own first.
    /// The keys of whatever is in the place of an object, be it no file.
    static std::vector<std::string> objectKeys(
        const LUMDocumentBundle& bundle, const std::string& domain, const Report& report = ignore);
    /// Files, and links that lead to files or nowhere.
    static std::vector<Resource> resources(
        const LUMDocumentBundle& bundle, const std::string& domain, const Report& report = ignore);

    /// The domain as the bundle takes it: null for the document's own.
    static NSRef<NSString> named(const std::string& domain);
    static std::string title(const std::string& domain); ///< "document" for the document's own.
};
