#include "LUMFoundation/LUMJob.h"

#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/jobs/recorder.h"

#include <mutex>

namespace {

struct LUMJobTest : ObjectTest {
    LUMJobTest() { job->setDelegate(recorder); }

    NSRef<NamedJob> job = NSMake<NamedJob>("a");
    NSRef<Recorder> recorder = NSMake<Recorder>();
    NSRef<NSError> error = NSError::errorWithDomain("test", 7);
};

/// Has all that a delegate needs but the declaration.
class Undeclared : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"jobDidStart:", &Undeclared::hear>(),
            NSMethodOf<"jobDidPause:", &Undeclared::hear>(),
            NSMethodOf<"jobDidResume:", &Undeclared::hear>(),
            NSMethodOf<"jobDidComplete:", &Undeclared::hear>(),
            NSMethodOf<"jobDidCancel:", &Undeclared::hear>(),
            NSMethodOf<"jobStateDidChange:", &Undeclared::hear>(),
        };
        static const NSClass& type = NSClass::define("Undeclared", &NSObject::classObject(), kMethods);
        return type;
    }
    void hear(const NSId&) { }

protected:
    Undeclared() = default;
    ~Undeclared() override = default;
};

TEST_F(LUMJobTest, IsIdleAtFirst)
{
    auto fresh = NSMake<LUMJob>();
    EXPECT_EQ(fresh->currentState(), 0);
    EXPECT_EQ(fresh->priority(), 0.5);
    EXPECT_EQ(fresh->progress(), 0.0);
    EXPECT_FALSE(fresh->error());
    EXPECT_FALSE(fresh->delegate());
}

TEST_F(LUMJobTest, NumbersItsStates)
{
    EXPECT_EQ(LUMJobStateIdle, 0);
    EXPECT_EQ(LUMJobStateRunning, 1);
    EXPECT_EQ(LUMJobStatePaused, 2);
    EXPECT_EQ(LUMJobStateCompleted, 3);
    EXPECT_EQ(LUMJobStateCancelled, 4);
}

TEST_F(LUMJobTest, ReportsEachChangeOfStateAfterMakingIt)
{
    std::string states;
    recorder->onEvent = [&](const std::string&, LUMJob& it) { states += std::to_string(it.currentState()); };
    EXPECT_TRUE(job->start());
    job->pause();
    job->resume();
    job->jobDidCancel();
    job->jobDidComplete();
    EXPECT_EQ(
        recorder->take(), "jobDidStart(a) jobDidPause(a) jobDidResume(a) jobDidCancel(a) jobDidComplete(a) ");
    EXPECT_EQ(states, "12143");
}

TEST_F(LUMJobTest, DoesNothingWhenCancelled)
{
    auto plain = NSMake<LUMJob>();
    plain->setDelegate(recorder);
    plain->start();
    recorder->take();
    plain->cancel();
    EXPECT_EQ(plain->currentState(), 1);
    EXPECT_EQ(recorder->take(), "");
}

TEST_F(LUMJobTest, DeliberatelyTestsNoStateBeforeItChangesIt)
{
    job->pause(); // never started
    job->start();
    job->start();
    job->resume(); // not paused
    EXPECT_EQ(recorder->take(), "jobDidPause(a) jobDidStart(a) jobDidStart(a) jobDidResume(a) ");
}

TEST_F(LUMJobTest, StoresAnyStateAndTellsNobody)
{
    job->setCurrentState(-12345);
    EXPECT_EQ(job->currentState(), -12345);
    EXPECT_EQ(recorder->take(), "");
}

TEST_F(LUMJobTest, ReportsAChangeOfStateOnlyWhenAsked)
{
    job->stateChanged();
    EXPECT_EQ(recorder->take(), "jobStateDidChange(a) ");
}

TEST_F(LUMJobTest, DeliberatelyReportsAnErrorAsACancellation)
{
    job->jobDidError(error);
    EXPECT_EQ(recorder->take(), "jobDidCancel(a) ");
    EXPECT_EQ(job->currentState(), LUMJobStateCancelled);
    EXPECT_EQ(job->error(), error);
}

TEST_F(LUMJobTest, HasItsErrorWhenItReportsIt)
{
    recorder->onEvent = [&](const std::string&, LUMJob& it) { EXPECT_EQ(it.error(), error); };
    job->jobDidError(error);
}

TEST_F(LUMJobTest, KeepsAnErrorThatIsSetAgain)
{
    job->setError(error);
    error = nullptr;
    job->setError(job->error());
    EXPECT_EQ(job->error()->code(), 7);
    job->setError(nullptr);
    EXPECT_FALSE(job->error());
}

TEST_F(LUMJobTest, TakesAnyPriority)
{
    job->setPriority(-1e300);
    EXPECT_EQ(job->priority(), -1e300);
}

TEST_F(LUMJobTest, ReportsToNobodyWithoutADelegate)
{
    auto alone = NSMake<LUMJob>();
    EXPECT_TRUE(alone->start());
    alone->pause();
    alone->resume();
    alone->stateChanged();
    alone->jobDidError(nullptr);
    alone->jobDidComplete();
    EXPECT_EQ(alone->currentState(), LUMJobStateCompleted);
}

TEST_F(LUMJobTest, DoesNotOwnItsDelegate)
{
    recorder = nullptr;
    EXPECT_FALSE(job->delegate());
    EXPECT_TRUE(job->start());
}

TEST_F(LUMJobTest, KeepsTheDelegateAliveWhileItReports)
{
    bool ended = false;
    struct Dropped : Recorder {
        bool* ended = nullptr;
        ~Dropped() override { *ended = true; }
    };
    auto dropped = NSMake<Dropped>();
    dropped->ended = &ended;
    dropped->onEvent = [&](const std::string&, LUMJob&) {
        auto* raw = dropped.get();
        dropped = nullptr; // the last reference but the job's own
        EXPECT_FALSE(ended);
        EXPECT_EQ(raw->heard, "jobDidStart(a) ");
    };
    job->setDelegate(dropped);
    job->start();
    EXPECT_TRUE(ended);
}

std::string raisedBy(const std::function<void()>& call)
{
    try {
        call();
    } catch (const NSException& exception) {
        EXPECT_FALSE(exception.userInfo());
        return exception.what();
    }
    return "nothing";
}

TEST_F(LUMJobTest, RaisesForADelegateThatDoesNotDeclareTheProtocol)
{
    const std::string expected =
        "LUMJobDelegateException: Delegate doesn't conform to LUMJobDelegate protocol.";
    EXPECT_EQ(raisedBy([this] { job->setDelegate(NSMake<Undeclared>()); }), expected);
    EXPECT_EQ(raisedBy([this] { job->setDelegate(NSMake<NSObject>()); }), expected);
    EXPECT_EQ(job->delegate(), recorder);
}

TEST_F(LUMJobTest, DeliberatelyRaisesForANullDelegate)
{
    EXPECT_EQ(raisedBy([this] { job->setDelegate(nullptr); }),
        "LUMJobDelegateException: Delegate doesn't conform to LUMJobDelegate protocol.");
    EXPECT_EQ(job->delegate(), recorder);
}

TEST_F(LUMJobTest, ReplacesItsDelegate)
{
    auto second = NSMake<Recorder>();
    job->setDelegate(second);
    job->start();
    EXPECT_EQ(recorder->take(), "");
    EXPECT_EQ(second->take(), "jobDidStart(a) ");
}

TEST_F(LUMJobTest, ReportsThroughOverridesOfStateAndDelegate)
{
    class Redirected : public LUMJob {
    public:
        NSRef<Recorder> other;
        std::string states;
        void setCurrentState(std::int32_t state) override { states += std::to_string(state); }
        NSRef<LUMJobDelegate> delegate() const override { return other; }
    };
    auto redirected = NSMake<Redirected>();
    redirected->other = recorder;
    redirected->start();
    redirected->pause();
    redirected->resume();
    redirected->stateChanged();
    redirected->jobDidError(nullptr);
    redirected->jobDidComplete();
    EXPECT_EQ(redirected->states, "12143");
    EXPECT_EQ(redirected->currentState(), 0);
    EXPECT_EQ(recorder->take(),
        "jobDidStart(job) jobDidPause(job) jobDidResume(job) jobStateDidChange(job) jobDidCancel(job) "
        "jobDidComplete(job) ");
}

TEST_F(LUMJobTest, ReportsWithItsLockHeldByASubclass)
{
    std::lock_guard<LUMJob> held(*job);
    job->jobDidComplete();
    EXPECT_EQ(recorder->take(), "jobDidComplete(a) ");
}

TEST_F(LUMJobTest, LocksAreNotRecursive)
{
    std::lock_guard<LUMJob> held(*job);
    EXPECT_THROW(job->lock(), NSException);
}

TEST_F(LUMJobTest, AnswersDynamicCalls)
{
    EXPECT_TRUE(NSSend<bool>(job, NSSelector("start")));
    NSSend(job, NSSelector("setPriority:"), 2);
    EXPECT_EQ(NSSend<double>(job, NSSelector("priority")), 2.0);
    EXPECT_EQ(NSSend<int>(job, NSSelector("currentState")), 1);
    EXPECT_EQ(NSSend<NSId>(job, NSSelector("delegate")), recorder);
    NSSend(job, NSSelector("jobDidError:"), error);
    EXPECT_EQ(NSSend<NSRef<NSError>>(job, NSSelector("error")), error);
    EXPECT_EQ(recorder->take(), "jobDidStart(a) jobDidCancel(a) ");
}

TEST_F(LUMJobTest, GivesItsProtocolToClassesThatAnswerDynamically)
{
    class Answering : public Recorder {
    public:
        static const NSClass& classObject()
        {
            static const NSClass& type =
                NSClass::define("Answering", &NSObject::classObject(), LUMJobDelegate::methods());
            return type;
        }
    };
    auto answering = NSMake<Answering>();
    std::string selectors;
    for (const NSMethod& method : LUMJobDelegate::methods()) {
        selectors += std::string(method.selector) + " ";
        NSSend(answering, NSSelector(method.selector), job);
    }
    EXPECT_EQ(selectors,
        "jobDidStart: jobDidPause: jobDidResume: jobDidComplete: jobDidCancel: jobStateDidChange: ");
    EXPECT_EQ(answering->take(),
        "jobDidStart(a) jobDidPause(a) jobDidResume(a) jobDidComplete(a) jobDidCancel(a) "
        "jobStateDidChange(a) ");
}

}
