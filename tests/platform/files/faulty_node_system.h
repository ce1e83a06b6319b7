#pragma once

#include "platform/files/node_system.h"

#include <atomic>

/// The running system for the length of a scope, with faults put into its calls.
class FaultyNodeSystem : public platform::NodeSystem {
public:
    /// Which calls a fault is put into.
    enum Calls : unsigned {
        None = 0,
        Open = 1,
        OpenFolder = 2,
        Attributes = 4,
        Handle = 8,
        Volume = 16,
        PathOf = 32,
        List = 64,
        Change = 128,
        ExtendedAttributes = 256,
        OpenReal = 512,
        All = ~0u,
    };

    FaultyNodeSystem() : mBefore(replaceCurrent(*this)) { }
    ~FaultyNodeSystem() override { replaceCurrent(mBefore); }

    /// The call number `at` of those, from 0 and counted from now on, fails with `error`; and all after it if
    /// `lasting`.
    void fail(unsigned calls, int error, int at = 0, bool lasting = true)
    {
        mCalls = calls;
        mError = error;
        mAt = at;
        mIsLasting = lasting;
        mCount = 0;
    }
    bool hasFailed() const { return mCount > mAt; }
    void heal() { mCalls = None; }
    int opened() const { return mOpened; }
    void setLimit(std::size_t limit) { mLimit = limit; }

    int open(int folder, const char* name) override
    {
        return kept(fails(Open) ? -mError : mReal.open(folder, name));
    }
    int openReal(const char* path) override
    {
        return kept(fails(Open | OpenReal) ? -mError : mReal.openReal(path));
    }
    int openTarget(const char* path) override { return kept(fails(Open) ? -mError : mReal.openTarget(path)); }
    int openFolder(int folder, const char* name) override
    {
        return kept(fails(OpenFolder) ? -mError : mReal.openFolder(folder, name));
    }
    int openByHandle(int mount, const platform::FileHandle& handle) override
    {
        return kept(fails(Handle) ? -mError : mReal.openByHandle(mount, handle));
    }
    void close(int descriptor) override
    {
        --mOpened;
        mReal.close(descriptor);
    }
    int attributes(int folder, const char* name, platform::FileAttributes& attributes) override
    {
        return fails(Attributes) ? -mError : mReal.attributes(folder, name, attributes);
    }
    int handle(int folder, const char* name, HandlePurpose purpose, platform::FileHandle& handle) override
    {
        return fails(Handle) ? -mError : mReal.handle(folder, name, purpose, handle);
    }
    int volume(int descriptor, NodeSystem::Volume& volume) override
    {
        return fails(Volume) ? -mError : mReal.volume(descriptor, volume);
    }
    int volumeAt(const char* path, NodeSystem::Volume& volume) override
    {
        return fails(Volume) ? -mError : mReal.volumeAt(path, volume);
    }
    int pathOf(int descriptor, std::string& path) override
    {
        return fails(PathOf) ? -mError : mReal.pathOf(descriptor, path);
    }
    int readLink(int link, std::string& target) override
    {
        return fails(PathOf) ? -mError : mReal.readLink(link, target);
    }
    std::ptrdiff_t list(int folder, std::span<std::byte> buffer) override
    {
        return fails(List) ? -mError : mReal.list(folder, buffer);
    }
    int renameWithoutReplacing(int folder, const char* from, const char* to) override
    {
        return fails(Change) ? -mError : mReal.renameWithoutReplacing(folder, from, to);
    }
    int createFile(int folder, const char* name) override
    {
        return fails(Change) ? -mError : mReal.createFile(folder, name);
    }
    int createFolder(int folder, const char* name) override
    {
        return fails(Change) ? -mError : mReal.createFolder(folder, name);
    }
    std::ptrdiff_t readAttribute(const char* path, const char* name, std::span<std::byte> value) override
    {
        return fails(ExtendedAttributes) ? -mError : mReal.readAttribute(path, name, value);
    }
    int writeAttribute(const char* path, const char* name, std::span<const std::byte> value) override
    {
        return fails(ExtendedAttributes) ? -mError : mReal.writeAttribute(path, name, value);
    }
    int removeAttribute(const char* path, const char* name) override
    {
        return fails(ExtendedAttributes) ? -mError : mReal.removeAttribute(path, name);
    }
    std::size_t descriptorLimit() override { return mLimit ? mLimit : mReal.descriptorLimit(); }

private:
    bool fails(unsigned call)
    {
        if ((mCalls & call) == 0)
            return false;
        const int count = mCount++;
        return mIsLasting ? count >= mAt : count == mAt;
    }
    int kept(int descriptor)
    {
        mOpened += descriptor >= 0 ? 1 : 0;
        return descriptor;
    }

    platform::NodeSystem& mReal = platform::NodeSystem::running();
    platform::NodeSystem& mBefore;
    unsigned mCalls = None;
    int mError = 0;
    int mAt = 0;
    bool mIsLasting = true;
    std::atomic<int> mCount { 0 };
    std::atomic<int> mOpened { 0 };
    std::size_t mLimit = 0;
};
