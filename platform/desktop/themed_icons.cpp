#include "platform/desktop/themed_icons.h"

#include "platform/desktop/icon_theme.h"
#include "platform/desktop/image_file.h"
#include "platform/desktop/theme_choice.h"

#include <mutex>
#include <unordered_map>

namespace platform {

namespace {

/// The icons of one theme by the names they were asked for; null for those it has not.
class ThemedIcons {
public:
    std::shared_ptr<const Pixels> icon(std::span<const std::string> names)
    {
        std::string key;
        for (const std::string& name : names)
            key.append(name).push_back('/'); // which is in no name
        const std::lock_guard lock(mLock);
        if (mKnown.size() >= kMostKnown)
            mKnown.clear();
        const auto [place, isNew] = mKnown.try_emplace(std::move(key));
        if (isNew) {
            const std::string file = mTheme.fileOf(names);
            if (!file.empty())
                place->second = readImageFile(file, kIconSide);
        }
        return place->second;
    }

private:
    static constexpr std::size_t kMostKnown = 1024; // icons of a desktop; four megabytes

    std::mutex mLock;
    const IconTheme mTheme { iconFolders(), chosenThemes(), kIconSide };
    std::unordered_map<std::string, std::shared_ptr<const Pixels>> mKnown;
};

}

std::shared_ptr<const Pixels> themedIcon(std::span<const std::string> names)
{
    static auto& icons = *new ThemedIcons; // never destroyed: icons are asked for until the very end
    return icons.icon(names);
}

}
