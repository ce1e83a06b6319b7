#include "platform/files/finder_attributes.h"

#include "platform/files/reference_path.h"

namespace platform {

namespace {

constexpr const char* kOwn = "user.com.apple.FinderInfo";
constexpr const char* kAppleDouble = "user.org.netatalk.Metadata";
constexpr const char* kAfpInfo = "user.DosStream.AFP_AfpInfo:$DATA";
constexpr std::size_t kLongestValue = 4096; // what others store is a tenth of this

/// An object as the calls for attributes take it: they refuse descriptors that only stand for one.
class Named {
public:
    int find(ReferenceNode& node)
    {
        const int problem = locate(node, mLocated);
        // Links are followed, but not one that the path itself is; and a path may change, a descriptor not.
        mName = mLocated.lease ? "/proc/self/fd/" + std::to_string(mLocated.lease.get()) : mLocated.path;
        return problem;
    }
    const char* name() const { return mName.c_str(); }

private:
    LocatedNode mLocated;
    std::string mName;
};

bool isAbsence(std::ptrdiff_t result)
{
    return result == -ENODATA || result == -EOPNOTSUPP;
}

/// What `decode` makes of an attribute; nothing when it is missing or something else.
template<typename Decode>
std::optional<FinderBytes> decoded(const char* object, const char* attribute, const Decode& decode)
{
    std::array<std::byte, kLongestValue> value;
    const std::ptrdiff_t length = NodeSystem::current().readAttribute(object, attribute, value);
    if (length < 0)
        return std::nullopt;
    return decode(std::span<const std::byte>(value).first(static_cast<std::size_t>(length)));
}

std::optional<FinderBytes> readOthers(const char* object)
{
    const auto found = decoded(object, kAppleDouble, finderBytesOfAppleDouble);
    return found ? found : decoded(object, kAfpInfo, finderBytesOfAfpInfo);
}

int readOwn(const char* object, FinderBytes& bytes, bool& isThere)
{
    const std::ptrdiff_t length = NodeSystem::current().readAttribute(object, kOwn, bytes);
    isThere = length == static_cast<std::ptrdiff_t>(bytes.size());
    if (!isThere)
        bytes = {};
    // Another length than ours is something else of that name, -ERANGE included.
    return length >= 0 || isAbsence(length) || length == -ERANGE ? 0 : static_cast<int>(length);
}

}

int readFinderBytes(ReferenceNode& node, FinderBytes& bytes)
{
    bytes = {};
    Named object;
    if (const int problem = object.find(node); problem != 0)
        return problem;
    if (node.kind() == FileKind::Link) // which has none, and must not be followed
        return 0;
    bool isThere = false;
    if (const int problem = readOwn(object.name(), bytes, isThere); problem != 0 || isThere)
        return problem;
    bytes = readOthers(object.name()).value_or(FinderBytes {});
    return 0;
}

int writeFinderInfo(ReferenceNode& node, const FileInfo& info)
{
    auto& system = NodeSystem::current();
    Named object;
    if (const int problem = object.find(node); problem != 0)
        return problem;
    if (node.kind() == FileKind::Link)
        return -EPERM;
    FinderBytes bytes {};
    bool isThere = false;
    if (const int problem = readOwn(object.name(), bytes, isThere); problem != 0)
        return problem;
    if (!isThere) // the second half stays as others have stored it
        bytes = readOthers(object.name()).value_or(FinderBytes {});
    store(info, bytes);
    // Nothing is stored as well where others would be read in its place.
    if (bytes != FinderBytes {} || readOthers(object.name()))
        return system.writeAttribute(object.name(), kOwn, bytes);
    const int problem = system.removeAttribute(object.name(), kOwn);
    return isAbsence(problem) ? 0 : problem;
}

}
