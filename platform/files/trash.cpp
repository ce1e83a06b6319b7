#include "platform/files/trash.h"

#include "platform/files/file_items.h"
#include "platform/files/open_file.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <sys/stat.h>

namespace platform {

namespace {

constexpr int kAttempts = 10'000;
constexpr std::size_t kMaxName = 255;
constexpr std::string_view kNoteSuffix = ".trashinfo";

/// Every byte but those that stand in a URL path for nothing but themselves.
std::string escaped(const std::string& path)
{
    constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    constexpr char kHex[] = "0123456789ABCDEF";
    std::string text;
    for (char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (kPlain.find(c) != std::string_view::npos)
            text.push_back(c);
        else
            text.append({ '%', kHex[byte >> 4], kHex[byte & 15] });
    }
    return text;
}

std::string joined(const std::string& folder, const std::string& name)
{
    return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

/// The item by the folder it is in, without links, and its name.
struct Item {
    std::string folder;
    std::string name;
    std::string path() const { return joined(folder, name); }
};

std::optional<Item> itemAt(const std::string& path)
{
    const std::string plain = path.substr(0, path.find_last_not_of('/') + 1);
    const std::size_t slash = plain.rfind('/');
    const std::string above = slash == std::string::npos ? "." : plain.substr(0, slash + 1);
    std::error_code error;
    const auto folder = std::filesystem::canonical(above, error);
    if (error)
        return std::nullopt;
    return Item { folder.native(), plain.substr(slash + 1) };
}

/// The first `size` bytes of a name at most, but no part of a character.
std::string shortened(const std::string& name, std::size_t size)
{
    std::size_t end = std::min(size, name.size());
    while (end < name.size() && end > 1 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
        --end;
    return name.substr(0, end);
}

/// "a.txt", then "a.2.txt", as the desktop counts, and short enough for its note.
std::string numbered(const std::string& name, int number)
{
    const std::size_t dot = std::min(name.find('.', 1), name.size());
    const std::string mark = number == 1 ? std::string() : "." + std::to_string(number);
    const std::string rest = shortened(name.substr(dot), kMaxName / 2);
    return shortened(name.substr(0, dot), kMaxName - kNoteSuffix.size() - mark.size() - rest.size()) + mark
        + rest;
}

class Trashing {
public:
    Trashing(TrashSystem& desktop, TreeSystem& system, Item item)
        : mDesktop(desktop), mSystem(system), mItem(std::move(item))
    {
    }

    int run()
    {
        const std::string home = mDesktop.homeTrash();
        const std::string top = mDesktop.topFolderOf(mItem.folder);
        const bool isHome = !home.empty() && mDesktop.topFolderOf(home) == top;
        const int byTop = isHome ? -EOPNOTSUPP : moveToTop(top);
        return byTop == 0 || home.empty() ? byTop : moveInto(home, mItem.path());
    }

private:
    /// Into the trash that all users of the volume share, or into the user's own beside it.
    int moveToTop(const std::string& top)
    {
        const std::string user = std::to_string(mDesktop.user());
        const std::string told = std::filesystem::path(mItem.path()).lexically_relative(top);
        TreeSystem::Status shared;
        const OpenFile<TreeSystem> folder(mSystem, mSystem.openAround(top));
        if (folder.get() < 0)
            return folder.get();
        const bool isShared = mSystem.status(folder.get(), ".Trash", shared) == 0 && shared.isFolder()
            && (shared.mode & S_ISVTX) != 0;
        if (isShared && makeOwn(joined(top, ".Trash"), user) == 0
            && moveInto(joined(top, ".Trash/" + user), told) == 0)
            return 0;
        const int made = makeOwn(top, ".Trash-" + user);
        return made != 0 ? made : moveInto(joined(top, ".Trash-" + user), told);
    }

    /// A folder of the user's alone; one that somebody else has put there, or a link, will not do.
    int makeOwn(const std::string& in, const std::string& name)
    {
        const OpenFile<TreeSystem> folder(mSystem, mSystem.openAround(in));
        if (folder.get() < 0)
            return folder.get();
        const int made = mSystem.makeFolder(folder.get(), name);
        if (made != -EEXIST)
            return made;
        TreeSystem::Status found;
        if (const int problem = mSystem.status(folder.get(), name, found); problem != 0)
            return problem;
        return found.isFolder() && found.owner == mDesktop.user() ? 0 : -EACCES;
    }

    /// `told` is the path that a restorer is told.
    int moveInto(const std::string& trash, const std::string& told)
    {
        for (const char* part : { "files", "info" })
            if (const int problem = makeOwn(trash, part); problem != 0)
                return problem;
        const OpenFile<TreeSystem> notes(mSystem, mSystem.openAround(joined(trash, "info")));
        if (notes.get() < 0)
            return notes.get();
        const std::string text =
            "[Trash Info]\nPath=" + escaped(told) + "\nDeletionDate=" + mDesktop.localTime() + "\n";
        for (int number = 1; number <= kAttempts; ++number) {
            const std::string name = numbered(mItem.name, number);
            const std::string note = name + std::string(kNoteSuffix);
            int problem = writeNote(notes.get(), note, text); // claims the name
            if (problem == 0) {
                problem = moveItem(mSystem, mItem.path(), joined(trash, "files/" + name));
                if (problem != 0 && (problem == -EEXIST || !isThere(joined(trash, "files"), name)))
                    (void)mSystem.removeFile(notes.get(), note);
            }
            if (problem != -EEXIST)
                return problem;
        }
        return -EEXIST;
    }

    /// Whether a copy has come into the trash though the item could not be removed where it was.
    bool isThere(const std::string& in, const std::string& name)
    {
        const OpenFile<TreeSystem> folder(mSystem, mSystem.openAround(in));
        TreeSystem::Status found;
        return folder.get() >= 0 && mSystem.status(folder.get(), name, found) == 0;
    }

    int writeNote(int in, const std::string& name, const std::string& text)
    {
        OpenFile<TreeSystem> note(mSystem, mSystem.createFile(in, name));
        if (note.get() < 0)
            return note.get();
        auto rest = std::as_bytes(std::span(text));
        int problem = 0;
        while (problem == 0 && !rest.empty()) {
            const ssize_t written = mSystem.write(note.get(), rest);
            if (written <= 0)
                problem = written < 0 ? static_cast<int>(written) : -EIO;
            else
                rest = rest.subspan(static_cast<std::size_t>(written));
        }
        if (problem == 0)
            problem = note.close();
        if (problem != 0)
            (void)mSystem.removeFile(in, name);
        return problem;
    }

    TrashSystem& mDesktop;
    TreeSystem& mSystem;
    const Item mItem;
};

}

int trashItem(TrashSystem& desktop, TreeSystem& system, const std::string& path)
{
    if (path.empty())
        return -ENOENT;
    auto item = itemAt(path);
    if (!item)
        return -ENOENT;
    if (item->name.empty() || item->name == "." || item->name == "..")
        return -EINVAL;
    const OpenFile<TreeSystem> folder(system, system.openAround(item->folder));
    if (folder.get() < 0)
        return folder.get();
    TreeSystem::Status there;
    if (const int problem = system.status(folder.get(), item->name, there); problem != 0)
        return problem;
    if (desktop.trashByDesktop(item->path()))
        return 0;
    return Trashing(desktop, system, std::move(*item)).run();
}

}
