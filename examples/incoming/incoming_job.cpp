#include "examples/incoming/incoming_job.h"

#include "LUMFoundation/LUMAbsoluteTimeGetCurrent.h"
#include "LUMFoundation/LUMData_Compression.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr int kSteps = 9;

std::string reasonOf(const NSRef<NSError>& error, const char* otherwise)
{
    return error ? error->localizedDescription()->utf8() : otherwise;
}

}

const NSClass& IncomingJob::classObject()
{
    static const NSClass& type = NSClass::define("IncomingJob", &LUMJob::classObject(), {});
    return type;
}

NSRef<IncomingJob> IncomingJob::jobForFile(const std::string& file, const std::string& originals,
    const IntakeBundle& bundle, const Executor& executor)
{
    return NSMake<IncomingJob>(file, originals, bundle, executor);
}

IncomingJob::IncomingJob(const std::string& file, const std::string& originals, const IntakeBundle& bundle,
    const Executor& executor)
    : mFile(file), mOriginals(originals), mBundle(bundle), mExecutor(executor)
{
    mReceipt.name = fs::path(file).stem().string();
}

IncomingJob::~IncomingJob() = default;

bool IncomingJob::start()
{
    LUMJob::start();
    mExecutor([job = NSShare(this)] { job->work(); });
    return true;
}

void IncomingJob::cancel()
{
    mCancelled = true;
}

double IncomingJob::progress() const
{
    return mStepsDone / static_cast<double>(kSteps);
}

void IncomingJob::work()
{
    const double began = LUMAbsoluteTimeGetCurrent();
    const bool whole = step(&IncomingJob::read) && step(&IncomingJob::digest) && step(&IncomingJob::name)
        && step(&IncomingJob::compress)
        && step(&IncomingJob::store)
        // What is stored is seen through, so that no result is left without its source beside it.
        && finishingStep(&IncomingJob::check) && finishingStep(&IncomingJob::keepRecord)
        && finishingStep(&IncomingJob::moveSourceAway) && finishingStep(&IncomingJob::keepRecord);
    mBytes = nullptr;
    mCompressed = nullptr;
    mReceipt.seconds = LUMAbsoluteTimeGetCurrent() - began;
    if (whole || !mReceipt.failure.empty())
        jobDidComplete();
    else
        jobDidCancel();
}

bool IncomingJob::step(bool (IncomingJob::*what)())
{
    return !mCancelled && finishingStep(what);
}

bool IncomingJob::finishingStep(bool (IncomingJob::*what)())
{
    if (!(this->*what)())
        return false;
    ++mStepsDone;
    return true;
}

bool IncomingJob::read()
{
    NSRef<NSError> error;
    mSource = LUMFileRef::fileRefWithPathResolveAlias(mFile, false, &error);
    mBytes = mSource ? NSData::dataWithContentsOfFile(mFile, &error) : nullptr;
    if (!mBytes)
        return fail("cannot be read: " + reasonOf(error, "gone"));
    mReceipt.size = mBytes->length();
    return true;
}

bool IncomingJob::digest()
{
    mReceipt.crc32 = LUMData_Compression::crc32(mBytes);
    mReceipt.md5 = LUMData_Compression::md5DigestString(mBytes)->utf8();
    mReceipt.sha1 = LUMData_Compression::sha1DigestString(mBytes)->utf8();
    return true;
}

bool IncomingJob::name()
{
    mReceipt.name = mBundle.nameFor(mReceipt);
    return true;
}

bool IncomingJob::compress()
{
    mCompressed = LUMData_Compression::gzipDeflate(mBytes);
    if (!mCompressed)
        return fail("cannot be compressed");
    mReceipt.stored = mCompressed->length();
    return true;
}

bool IncomingJob::store()
{
    const std::string problem = mBundle.store(mReceipt.name, mCompressed);
    return problem.empty() || fail("cannot be stored: " + problem);
}

bool IncomingJob::check()
{
    return NSEqual(LUMData_Compression::gzipInflate(mBundle.compressed(mReceipt.name)), mBytes)
        || fail("does not inflate to the same bytes");
}

bool IncomingJob::keepRecord()
{
    const std::string problem = mBundle.keep(mReceipt, mSource);
    return problem.empty() || fail("has no record: " + problem);
}

bool IncomingJob::moveSourceAway()
{
    if (!NSEqual(LUMFileRef::fileRefWithPathResolveAlias(mFile, false), mSource))
        return fail("was replaced while it was taken in");
    const fs::path target = fs::path(mOriginals) / mReceipt.name;
    std::error_code problem;
    if (fs::exists(fs::symlink_status(target, problem))
        && !NSEqual(NSData::dataWithContentsOfFile(target.string()), mBytes))
        return fail("cannot be moved away: another file of its name is there");
    fs::rename(mFile, target, problem);
    if (problem == std::errc::cross_device_link)
        return copySourceAway(target.string());
    return !problem || fail("cannot be moved away: " + problem.message());
}

/// To another volume, where the source is another file: the record refers to that before the first one goes.
bool IncomingJob::copySourceAway(const std::string& target)
{
    std::error_code problem;
    fs::copy_file(mFile, target, fs::copy_options::overwrite_existing, problem);
    mSource = problem ? nullptr : LUMFileRef::fileRefWithPath(target);
    if (!mSource)
        return fail("cannot be copied away: " + problem.message());
    if (!keepRecord())
        return false;
    fs::remove(mFile, problem);
    return !problem || fail("cannot be removed: " + problem.message());
}

bool IncomingJob::fail(const std::string& why)
{
    mReceipt.failure = why;
    return false;
}
