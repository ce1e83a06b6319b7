#include "platform/runloop/main_thread.h"

#include <pthread.h>
#include <unistd.h>

namespace platform {

namespace {

enum class Answer : char { Unknown, No, Yes };

// The two system calls cost a third of a microsecond, so each thread asks once.
thread_local constinit Answer tIsMain = Answer::Unknown;

void forgetAfterFork()
{
    // Only the thread that forked lives on in the child, so its answer is the only one to forget.
    tIsMain = Answer::Unknown;
}

}

bool isMainThread()
{
    if (tIsMain == Answer::Unknown) {
        static const bool kForgetsAfterFork = pthread_atfork(nullptr, nullptr, forgetAfterFork) == 0;
        bool isMain = gettid() == getpid();
        if (!kForgetsAfterFork)
            return isMain; // no memory for the handler: go on asking the system
        tIsMain = isMain ? Answer::Yes : Answer::No;
    }
    return tIsMain == Answer::Yes;
}

}
