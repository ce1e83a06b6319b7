#include "LUMPlatform/NSSelector.h"

#include "platform/objects/mutex.h"

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>

struct NSSelectorTable {
    struct Interned {
        std::string text;
        NSSelector::Entry entry;
    };

    const NSSelector::Entry* intern(std::string_view name)
    {
        platform::MutexLock lock(mLock);
        if (auto found = mEntries.find(name); found != mEntries.end())
            return &found->second->entry;
        auto interned = std::make_unique<Interned>();
        interned->text = name;
        std::string_view text = interned->text;
        auto colons = static_cast<std::size_t>(std::count(text.begin(), text.end(), ':'));
        interned->entry = { text, colons, std::hash<std::string_view> {}(text) };
        return &mEntries.emplace(text, std::move(interned)).first->second->entry;
    }

private:
    platform::Mutex mLock;
    std::unordered_map<std::string_view, std::unique_ptr<Interned>> mEntries NS_GUARDED_BY(mLock);
};

NSSelector::NSSelector(std::string_view name)
{
    // Never destroyed: selectors are used until the very end of the process.
    static NSSelectorTable& table = *new NSSelectorTable;
    if (!name.empty())
        mEntry = table.intern(name);
}
