#include "platform/runloop/parking.h"

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace platform {

static_assert(
    sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t), "the kernel waits on the plain word");

void Parking::wait()
{
    std::uint32_t state = Empty;
    if (!mState.compare_exchange_strong(state, Waiting, std::memory_order_acquire))
        return;
    while (mState.load(std::memory_order_acquire) == Waiting)
        syscall(
            SYS_futex, &mState, FUTEX_WAIT_PRIVATE, static_cast<std::uint32_t>(Waiting), nullptr, nullptr, 0);
}

void Parking::release()
{
    // A std::atomic may not be notified once its thread went on and ended it. The kernel takes a bare
    // address, and a wake for a word that is no more is a spurious one for whoever has the memory now.
    std::atomic<std::uint32_t>* word = &mState;
    if (mState.exchange(Released, std::memory_order_acq_rel) == Waiting)
        syscall(SYS_futex, word, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
}

}
