#include "LUMFoundation/OVMainThreadProxy.h"

#include "LUMPlatform/NSSend.h"
#include "tests/jobs/main_thread_proxy_fixture.h"

namespace {

TEST_F(OVMainThreadProxyTest, DoesNotOwnItsTarget)
{
    bool ended = false;
    player->atEnd = [&] { ended = true; };
    player = nullptr;
    EXPECT_TRUE(ended);
}

TEST_F(OVMainThreadProxyTest, AnswersZeroOnceItsTargetHasEnded)
{
    player = nullptr;
    std::thread([&] {
        NSSend(proxy, kPlay);
        NSSend(proxy, kSetTitle, NSRef<NSString>("late"));
        EXPECT_EQ(NSSend<NSId>(proxy, kTitle), nullptr);
        EXPECT_EQ(NSSend<int>(proxy, NSSelector("add:to:"), 2, 3), 0);
        EXPECT_EQ(NSSend<double>(proxy, NSSelector("half:"), 5.0), 0.0);
        NSSend(proxy, NSSelector("some:object:"), NSRef<NSString>("a"), NSId());
        EXPECT_EQ(proxy->performSelector(kTitle), nullptr);
        EXPECT_EQ(proxy->performSelectorWithObject(kSetTitle, nullptr), nullptr);
        EXPECT_FALSE(proxy->respondsToSelector(kPlay));
    }).join();
}

class DroppedTargetTest : public OVMainThreadProxyTest {
protected:
    DroppedTargetTest()
    {
        player->whilePlaying = [this] {
            player = nullptr;
            story += "dropped ";
        };
        player->atEnd = [this] { (story += "ended@") += std::string(here()) + ' '; };
    }

    std::string story;
};

TEST_F(DroppedTargetTest, LivesThroughTheMessageAndEndsOnTheMainThread)
{
    serveMainLoopWhile([&] { NSSend(proxy, kPlay); });
    EXPECT_EQ(story, "dropped ended@main ");
}

TEST_F(DroppedTargetTest, LivesThroughAPerformedSelectorAndEndsOnTheMainThread)
{
    serveMainLoopWhile([&] { static_cast<void>(proxy->performSelector(kPlay)); });
    EXPECT_EQ(story, "dropped ended@main ");
}

/// A message whose argument is let go by everybody else while it runs.
class DroppedArgumentTest : public OVMainThreadProxyTest {
protected:
    DroppedArgumentTest()
    {
        auto mortal = NSMake<Player>();
        mortal->atEnd = [this] { story += "ended "; };
        track = mortal;
        player->whilePlaying = [this] {
            track = nullptr;
            story += "dropped ";
        };
    }

    NSId track;
    std::string story;
};

TEST_F(DroppedArgumentTest, LivesThroughTheMessage)
{
    serveMainLoopWhile([&] { NSSend(proxy, NSSelector("mix:"), track); });
    EXPECT_EQ(story, "dropped ended ");
}

TEST_F(DroppedArgumentTest, LivesThroughAPerformedSelector)
{
    serveMainLoopWhile(
        [&] { static_cast<void>(proxy->performSelectorWithObject(NSSelector("mix:"), track)); });
    EXPECT_EQ(story, "dropped ended ");
}

TEST_F(DroppedArgumentTest, LivesThroughAPerformedSelectorThatLeavesItOut)
{
    serveMainLoopWhile([&] { static_cast<void>(proxy->performSelectorWithObject(kPlay, track)); });
    EXPECT_EQ(story, "dropped ended ");
}

TEST_F(OVMainThreadProxyTest, SurvivesBeingDroppedByItsOwnMessage)
{
    player->whilePlaying = [&] { proxy = nullptr; };
    serveMainLoopWhile([&] {
        NSId sent = proxy;
        NSSend(sent, kPlay);
    });
    EXPECT_EQ(player->take(), "play@main ");
}

TEST_F(OVMainThreadProxyTest, IsSafeWhileTheTargetEnds)
{
    for (int round = 0; round < 200; ++round) {
        player = NSMake<Player>();
        proxy = OVMainThreadProxy::mainThreadProxy(player);
        serveMainLoopWhile([&, sent = proxy] {
            NSThread::performOnMainThread([&] { player = nullptr; });
            NSSend(sent, kPlay);
            NSSend(sent, kPlay);
        });
    }
}

}
