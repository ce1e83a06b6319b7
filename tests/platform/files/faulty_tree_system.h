#pragma once

#include "platform/files/tree_system.h"

#include <algorithm>
#include <limits>
#include <utility>

/// The real system, one call of which fails.
class FaultyTreeSystem : public platform::TreeSystem {
public:
    FaultyTreeSystem() = default;
    /// The call number `at`, from 0, fails with `error` (an errno).
    FaultyTreeSystem(int at, int error) : mAt(at), mError(error) { }

    /// As between two volumes, whose files cannot be renamed from one to the other.
    void refuseFirstRename(int error) { mFirstRename = error; }
    /// As on a volume that cannot rename without replacing.
    void refuseRenames(int error) { mRenames = error; }
    void refuseLinks(int error) { mLinks = error; }
    void refuseRanges(int error) { mRanges = error; }
    void refuseHoles(int error) { mHoles = error; }
    void refuseOwners(int error) { mOwners = error; }

    bool failed() const { return mCalls > mAt; }
    int openFiles() const { return mOpen; }
    int mostOpenFiles() const { return mMostOpen; }

    int openAround(const std::string& path) override
    {
        return opened([&] { return mReal.openAround(path); });
    }
    int openFolderAt(const std::string& path) override
    {
        return opened([&] { return mReal.openFolderAt(path); });
    }
    int openFolder(int in, const std::string& name) override
    {
        return opened([&] { return mReal.openFolder(in, name); });
    }
    int openFile(int in, const std::string& name) override
    {
        return opened([&] { return mReal.openFile(in, name); });
    }
    int createFile(int in, const std::string& name) override
    {
        return opened([&] { return mReal.createFile(in, name); });
    }
    int close(int file) override
    {
        const int fault = mCalls++ == mAt ? -mError : 0;
        --mOpen;
        const int result = mReal.close(file); // a close that fails has closed all the same
        return fault != 0 ? fault : result;
    }
    int status(int in, const std::string& name, Status& status) override
    {
        return called([&] { return mReal.status(in, name, status); });
    }
    int status(int file, Status& status) override
    {
        return called([&] { return mReal.status(file, status); });
    }
    int details(int in, const std::string& name, Details& details) override
    {
        return called([&] { return mReal.details(in, name, details); });
    }
    int entries(int folder, std::vector<Entry>& entries) override
    {
        return called([&] { return mReal.entries(folder, entries); });
    }
    int readLink(int in, const std::string& name, std::string& target) override
    {
        return called([&] { return mReal.readLink(in, name, target); });
    }
    int makeFolder(int in, const std::string& name) override
    {
        return called([&] { return mReal.makeFolder(in, name); });
    }
    int makeLink(const std::string& target, int in, const std::string& name) override
    {
        return called([&] { return mReal.makeLink(target, in, name); });
    }
    int makeSpecial(int in, const std::string& name, mode_t mode, dev_t special) override
    {
        return called([&] { return mReal.makeSpecial(in, name, mode, special); });
    }
    int link(int in, const std::string& name, int to, const std::string& newName) override
    {
        return called([&] { return mLinks != 0 ? -mLinks : mReal.link(in, name, to, newName); });
    }
    int renameNew(int in, const std::string& name, int to, const std::string& newName) override
    {
        const int refusal = mRenames != 0 ? mRenames : std::exchange(mFirstRename, 0);
        return called([&] { return refusal != 0 ? -refusal : mReal.renameNew(in, name, to, newName); });
    }
    int rename(int in, const std::string& name, int to, const std::string& newName) override
    {
        return called([&] { return mReal.rename(in, name, to, newName); });
    }
    int mayChange(int at) override
    {
        return called([&] { return mReal.mayChange(at); });
    }
    int removeFile(int in, const std::string& name) override
    {
        return called([&] { return mReal.removeFile(in, name); });
    }
    int removeFolder(int in, const std::string& name) override
    {
        return called([&] { return mReal.removeFolder(in, name); });
    }
    std::int64_t nextData(int file, std::int64_t from) override
    {
        return called([&] { return mHoles != 0 ? -mHoles : mReal.nextData(file, from); });
    }
    std::int64_t nextHole(int file, std::int64_t from) override
    {
        return called([&] { return mReal.nextHole(file, from); });
    }
    int moveTo(int file, std::int64_t at) override
    {
        return called([&] { return mReal.moveTo(file, at); });
    }
    int setSize(int file, std::uint64_t size) override
    {
        return called([&] { return mReal.setSize(file, size); });
    }
    /// Copies little at a time.
    ssize_t copyRange(int from, int to, std::size_t size) override
    {
        return called([&]() -> ssize_t {
            return mRanges != 0 ? -mRanges : mReal.copyRange(from, to, std::min<std::size_t>(size, 4));
        });
    }
    ssize_t read(int file, std::span<std::byte> bytes) override
    {
        return called([&] { return mReal.read(file, bytes); });
    }
    /// Writes little at a time, as a full disk or a slow pipe would.
    ssize_t write(int file, std::span<const std::byte> bytes) override
    {
        return called([&] { return mReal.write(file, bytes.first(std::min<std::size_t>(bytes.size(), 4))); });
    }
    int extendedNames(int file, std::vector<std::string>& names) override
    {
        return called([&] { return mReal.extendedNames(file, names); });
    }
    int extended(int file, const std::string& name, std::vector<std::byte>& value) override
    {
        return called([&] { return mReal.extended(file, name, value); });
    }
    int setExtended(int file, const std::string& name, std::span<const std::byte> value) override
    {
        return called([&] { return mReal.setExtended(file, name, value); });
    }
    int setOwner(int file, uid_t owner, gid_t group) override
    {
        return called([&] { return mOwners != 0 ? -mOwners : mReal.setOwner(file, owner, group); });
    }
    int setOwner(int in, const std::string& name, uid_t owner, gid_t group) override
    {
        return called([&] { return mOwners != 0 ? -mOwners : mReal.setOwner(in, name, owner, group); });
    }
    int setPermissions(int file, mode_t permissions) override
    {
        return called([&] { return mReal.setPermissions(file, permissions); });
    }
    int setTimes(int file, const timespec& accessed, const timespec& modified) override
    {
        return called([&] { return mReal.setTimes(file, accessed, modified); });
    }
    int setTimes(int in, const std::string& name, const timespec& accessed, const timespec& modified) override
    {
        return called([&] { return mReal.setTimes(in, name, accessed, modified); });
    }
    int statusAt(const std::string& path, Status& status) override
    {
        return called([&] { return mReal.statusAt(path, status); });
    }
    int setOwnerAt(const std::string& path, uid_t owner, gid_t group) override
    {
        return called([&] { return mReal.setOwnerAt(path, owner, group); });
    }
    int setPermissionsAt(const std::string& path, mode_t permissions) override
    {
        return called([&] { return mReal.setPermissionsAt(path, permissions); });
    }
    int setModifiedAt(const std::string& path, const timespec& modified) override
    {
        return called([&] { return mReal.setModifiedAt(path, modified); });
    }
    /// Only counted: what the disk does with it no test can see.
    int sync(int) override
    {
        return called([] { return 0; });
    }

private:
    template<typename Call> auto called(Call call) -> decltype(call())
    {
        return mCalls++ == mAt ? -mError : call();
    }
    template<typename Call> int opened(Call call)
    {
        const int file = called(call);
        mOpen += file >= 0 ? 1 : 0;
        mMostOpen = std::max(mMostOpen, mOpen);
        return file;
    }

    platform::TreeSystem& mReal = platform::TreeSystem::real();
    const int mAt = std::numeric_limits<int>::max();
    const int mError = 0;
    int mFirstRename = 0;
    int mRenames = 0;
    int mLinks = 0;
    int mRanges = 0;
    int mHoles = 0;
    int mOwners = 0;
    int mCalls = 0;
    int mOpen = 0;
    int mMostOpen = 0;
};
