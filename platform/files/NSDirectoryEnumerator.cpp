#include "LUMPlatform/NSDirectoryEnumerator.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/file_attributes.h"
#include "platform/files/folder_stack.h"
#include "platform/files/open_file.h"
#include "platform/files/system_path.h"

#include <algorithm>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"step", &NSDirectoryEnumerator::step>(),
    NSMethodOf<"fileAttributes", &NSDirectoryEnumerator::fileAttributes>(),
    NSMethodOf<"skipDescendants", &NSDirectoryEnumerator::skipDescendants>(),
};

}

struct NSDirectoryEnumerator::Walk {
    using Entry = platform::TreeSystem::Entry;
    struct Level {
        std::vector<Entry> pending; // the next one last
        std::size_t prefix = 0; // how much of the way leads here
    };

    explicit Walk(int opened) : base(system, opened), way(system, opened) { }

    void list()
    {
        Level level;
        (void)system.entries(way.folder(), level.pending); // what it says before a failure counts
        std::reverse(level.pending.begin(), level.pending.end());
        level.prefix = prefix.size();
        levels.push_back(std::move(level));
    }
    void enterLast()
    {
        if (!last.mayBeFolder || way.enter(last.name) != 0)
            return;
        prefix += last.name + '/';
        list();
    }
    void leave()
    {
        levels.pop_back();
        if (levels.empty())
            return;
        prefix.resize(levels.back().prefix);
        if (way.leave() != 0)
            levels.clear(); // it was moved elsewhere; nothing can be told about the rest
    }

    platform::TreeSystem& system = platform::TreeSystem::real();
    const platform::OpenFile<platform::TreeSystem> base;
    platform::FolderStack way;
    std::vector<Level> levels;
    std::string prefix;
    Entry last;
};

NSDirectoryEnumerator::NSDirectoryEnumerator(std::unique_ptr<Walk> walk) : mWalk(std::move(walk))
{
    if (mWalk->base.get() >= 0)
        mWalk->list();
}

NSDirectoryEnumerator::~NSDirectoryEnumerator() = default;

const NSClass& NSDirectoryEnumerator::classObject()
{
    static const NSClass& type =
        NSClass::define("NSDirectoryEnumerator", &NSEnumerator::classObject(), kMethods);
    return type;
}

NSId NSDirectoryEnumerator::nextObject()
{
    while (step()) {
        if (const auto path = NSString::stringWithUTF8String(mWalk->prefix + mWalk->last.name))
            return path;
        skipDescendants();
    }
    return nullptr;
}

bool NSDirectoryEnumerator::step()
{
    mWalk->enterLast();
    while (!mWalk->levels.empty()) {
        auto& pending = mWalk->levels.back().pending;
        if (pending.empty()) {
            mWalk->leave();
            continue;
        }
        mWalk->last = std::move(pending.back());
        pending.pop_back();
        return true;
    }
    mWalk->last = {};
    return false;
}

NSRef<NSDictionary> NSDirectoryEnumerator::fileAttributes() const
{
    platform::TreeSystem::Details details;
    if (mWalk->last.name.empty()
        || mWalk->system.details(mWalk->way.folder(), mWalk->last.name, details) != 0)
        return nullptr;
    return platform::attributesOf(details);
}

void NSDirectoryEnumerator::skipDescendants()
{
    mWalk->last.mayBeFolder = false;
}

NSRef<NSDirectoryEnumerator> NSFileManager::enumeratorAtPath(const NSRef<NSString>& path) const
{
    if (!fileExistsAtPath(path))
        return nullptr;
    const int folder = platform::TreeSystem::real().openFolderAt(platform::systemPath(path));
    return NSMake<NSDirectoryEnumerator>(std::make_unique<NSDirectoryEnumerator::Walk>(folder));
}
