#pragma once

#include "platform/files/file_system.h"

/// The real file system, one call of which fails.
class FaultyFileSystem : public platform::FileSystem {
public:
    /// The call number `at`, from 0, fails with `error` (an errno).
    FaultyFileSystem(int at, int error) : mAt(at), mError(error) { }

    bool failed() const { return mCalls > mAt; }
    int openFiles() const { return mOpen; }

    int status(const std::string& path, Status& status) override
    {
        return fails() ? -mError : mReal.status(path, status);
    }
    int status(int file, Status& status) override { return fails() ? -mError : mReal.status(file, status); }
    int readLink(const std::string& path, std::string& target) override
    {
        return fails() ? -mError : mReal.readLink(path, target);
    }
    int openForReading(const std::string& path, platform::LastLink link) override
    {
        return opened(fails() ? -mError : mReal.openForReading(path, link));
    }
    int openFolder(const std::string& path) override
    {
        return opened(fails() ? -mError : mReal.openFolder(path));
    }
    int create(const std::string& path, mode_t permissions) override
    {
        return opened(fails() ? -mError : mReal.create(path, permissions));
    }
    int openForWriting(const std::string& path) override
    {
        return opened(fails() ? -mError : mReal.openForWriting(path));
    }
    ssize_t read(int file, std::span<std::byte> bytes) override
    {
        return fails() ? -mError : mReal.read(file, bytes);
    }
    /// Writes little at a time, as a full disk or a slow pipe would.
    ssize_t write(int file, std::span<const std::byte> bytes) override
    {
        return fails() ? -mError : mReal.write(file, bytes.first(std::min<std::size_t>(bytes.size(), 4)));
    }
    int setOwner(int file, uid_t owner, gid_t group) override
    {
        return fails() ? -mError : mReal.setOwner(file, owner, group);
    }
    int setPermissions(int file, mode_t permissions) override
    {
        return fails() ? -mError : mReal.setPermissions(file, permissions);
    }
    int sync(int file) override { return fails() ? -mError : mReal.sync(file); }
    int close(int file) override
    {
        const bool fault = fails();
        --mOpen;
        int result = mReal.close(file); // a close that fails has closed all the same
        return fault ? -mError : result;
    }
    int rename(const std::string& from, const std::string& to) override
    {
        return fails() ? -mError : mReal.rename(from, to);
    }
    int unlink(const std::string& path) override { return fails() ? -mError : mReal.unlink(path); }

private:
    bool fails() { return mCalls++ == mAt; }
    int opened(int file)
    {
        mOpen += file >= 0 ? 1 : 0;
        return file;
    }

    platform::FileSystem& mReal = platform::FileSystem::real();
    const int mAt;
    const int mError;
    int mCalls = 0;
    int mOpen = 0;
};
