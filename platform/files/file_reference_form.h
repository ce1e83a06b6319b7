#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Turns paths into the identity of what they lead to, and back: what URLs that name a file by its identity
/// stand on. Who knows about identities gives an object of this to `use` once, when the library is loaded.
class FileReferenceForm {
public:
    virtual ~FileReferenceForm() = default;

    /// The identity of what is at `path`, a symbolic link itself included, in characters that stand unescaped
    /// in the path of a URL, "/" not among them. Empty when nothing is there.
    virtual std::string identityAt(const std::string& path) = 0;
    /// The path of the object with that identity now; empty for one that is gone and for text that is none.
    virtual std::string pathOf(std::string_view identity) = 0;

    /// Null before anyone has given one.
    static FileReferenceForm* current();
    static void use(FileReferenceForm* form);
};

}
