#include "examples/incoming/intake.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"

#include <filesystem>

namespace {

constexpr NSMethod kMethods[] = { NSMethodOf<"fileArrived:", &Intake::fileArrived>() };

}

const NSClass& Intake::classObject()
{
    static const NSClass& type = NSClass::define("Intake", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<Intake> Intake::intakeForFolder(const std::string& folder, const std::string& originals,
    const IntakeBundle& bundle, std::size_t jobs, std::function<void(const Receipt&)> ended)
{
    auto intake = NSMake<Intake>(originals, bundle, jobs, std::move(ended));
    intake->mQueue->setDelegate(intake);
    intake->mWatcher = LUMIncomingFolderWatcher::initWithFolder(folder, "complete", "partial");
    if (!intake->mWatcher)
        return nullptr;
    NSNotificationCenter::defaultCenter()->addObserver(
        intake, NSSelector("fileArrived:"), LUMIncomingFileNotification, intake->mWatcher);
    return intake;
}

Intake::Intake(const std::string& originals, const IntakeBundle& bundle, std::size_t jobs,
    std::function<void(const Receipt&)> ended)
    : mOriginals(originals)
    , mBundle(bundle)
    , mEnded(std::move(ended))
    , mWorkers(jobs)
    , mQueue(NSMake<LUMJobQueue>())
{
    mQueue->setMaxConcurrentJobs(jobs);
}

Intake::~Intake() = default;

void Intake::fileArrived(const NSRef<NSNotification>& notification)
{
    auto completed = NSCast<NSNumber>(notification->userInfo()->objectForKey("completed"));
    if (mStopping || !completed->boolValue())
        return;
    const std::string file = NSCast<NSString>(notification->userInfo()->objectForKey("file"))->utf8();
    if (mJobs.contains(file) || mFailed.contains(file))
        return;
    auto job = IncomingJob::jobForFile(
        file, mOriginals, mBundle, [this](std::function<void()> work) { mWorkers.run(std::move(work)); });
    mJobs.emplace(file, job);
    mQueue->addJob(job);
    mQueue->startNextJobIfNeeded();
}

void Intake::bringToMainThread(LUMJob& job)
{
    NSThread::performOnMainThread(
        [self = NSShare(this), ended = NSCast<IncomingJob>(NSShare(&job))] { self->jobEnded(ended); });
}

void Intake::jobEnded(const NSRef<IncomingJob>& job)
{
    mJobs.erase(job->file());
    if (job->currentState() == LUMJobStateCompleted) {
        const bool isIn = job->receipt().failure.empty();
        if (!isIn)
            mFailed.emplace(job->file(), job->receipt().failure);
        mEnded(job->receipt());
        // Another of that name may have come while this one was in work.
        std::error_code problem;
        if (isIn && std::filesystem::exists(job->file(), problem))
            mWatcher->scanFolder();
    }
    becomeIdleIfDone();
}

void Intake::stop(std::function<void()> idle)
{
    mIdle = std::move(idle);
    mStopping = true;
    for (const auto& [file, job] : std::unordered_map(mJobs))
        mQueue->cancelJob(job);
    becomeIdleIfDone();
}

void Intake::becomeIdleIfDone()
{
    if (mStopping && mJobs.empty() && mIdle)
        std::exchange(mIdle, nullptr)();
}
