#pragma once

#include "LUMFoundation/LUMDocumentBundle.h"

#include <string>
#include <vector>

/// What is in a bundle, for a person or a check. An empty domain is the document's own.
struct BundleContents {
    struct Resource {
        std::string path; ///< Within the area of the domain.
        std::uint64_t size;
    };

    static std::vector<std::string> domains(const LUMDocumentBundle& bundle); ///< The document's own first.
    static std::vector<std::string> objectKeys(const LUMDocumentBundle& bundle, const std::string& domain);
    static std::vector<Resource> resources(const LUMDocumentBundle& bundle, const std::string& domain);

    /// The domain as the bundle takes it: null for the document's own.
    static NSRef<NSString> named(const std::string& domain);
    static std::string title(const std::string& domain); ///< "document" for the document's own.
};
