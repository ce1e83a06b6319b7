#pragma once

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <elf.h>
#include <functional>
#include <optional>
#include <sys/ptrace.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__x86_64__) || defined(__aarch64__)
inline constexpr bool kCallsCanFail = true;
#else
inline constexpr bool kCallsCanFail = false; // each processor has its own way to replace a call
#endif

/// A child process that is seen at each of its system calls, on the way in and on the way out.
class TracedChild {
public:
    struct Call {
        std::uint64_t number;
        std::array<std::uint64_t, 6> arguments;
    };

    /// Begins `action`, whose result becomes the child's exit status.
    explicit TracedChild(const std::function<int()>& action) : mProcess(fork())
    {
        if (mProcess == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
                _exit(1);
            raise(SIGSTOP);
            _exit(action());
        }
        waitpid(mProcess, &mStatus, 0);
        mIsTraced = isRunning();
        if (mIsTraced)
            ptrace(PTRACE_SETOPTIONS, mProcess, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    }
    ~TracedChild()
    {
        if (isRunning())
            kill();
    }
    TracedChild(const TracedChild&) = delete;
    TracedChild& operator=(const TracedChild&) = delete;

    bool isTraced() const { return mIsTraced; } ///< False where the system does not allow it.
    bool isRunning() const { return WIFSTOPPED(mStatus); }

    /// Lets it run to its next stop, or to its end.
    void goOn()
    {
        for (long signal = 0;; signal = WSTOPSIG(mStatus)) {
            ptrace(PTRACE_SYSCALL, mProcess, nullptr, signal);
            waitpid(mProcess, &mStatus, 0);
            if (!isRunning() || WSTOPSIG(mStatus) == (SIGTRAP | 0x80))
                return;
        }
    }
    void kill()
    {
        ::kill(mProcess, SIGKILL);
        waitpid(mProcess, &mStatus, 0);
    }
    /// The result of the action; null for a child that was killed, by itself too.
    std::optional<int> result() const
    {
        return WIFEXITED(mStatus) ? std::optional(WEXITSTATUS(mStatus)) : std::nullopt;
    }

    /// The call that it is about to make; null on the way out of one.
    std::optional<Call> call() const
    {
        __ptrace_syscall_info info = {};
        const long size = ptrace(PTRACE_GET_SYSCALL_INFO, mProcess, sizeof info, &info);
        if (size <= 0 || info.op != PTRACE_SYSCALL_INFO_ENTRY)
            return std::nullopt;
        Call call { info.entry.nr, {} };
        std::copy_n(info.entry.args, call.arguments.size(), call.arguments.begin());
        return call;
    }
    /// Lets the call that it is about to make do nothing but fail with `error`, an errno, where
    /// kCallsCanFail.
    void failCall(int error)
    {
        setCall(-1); // there is no such call
        goOn();
        setAnswer(-error);
    }

private:
    user_regs_struct registers() const
    {
        user_regs_struct registers = {};
        iovec place { &registers, sizeof registers };
        ptrace(PTRACE_GETREGSET, mProcess, NT_PRSTATUS, &place);
        return registers;
    }
    void setRegisters(user_regs_struct registers) const
    {
        iovec place { &registers, sizeof registers };
        ptrace(PTRACE_SETREGSET, mProcess, NT_PRSTATUS, &place);
    }
#if defined(__x86_64__)
    void setCall(int number) const
    {
        user_regs_struct changed = registers();
        changed.orig_rax = static_cast<unsigned long long>(number);
        setRegisters(changed);
    }
    void setAnswer(int answer) const
    {
        user_regs_struct changed = registers();
        changed.rax = static_cast<unsigned long long>(answer);
        setRegisters(changed);
    }
#elif defined(__aarch64__)
    void setCall(int number) const
    {
        iovec place { &number, sizeof number };
        ptrace(PTRACE_SETREGSET, mProcess, NT_ARM_SYSTEM_CALL, &place);
    }
    void setAnswer(int answer) const
    {
        user_regs_struct changed = registers();
        changed.regs[0] = static_cast<unsigned long long>(answer);
        setRegisters(changed);
    }
#else
    void setCall(int) const { }
    void setAnswer(int) const { }
#endif

    const pid_t mProcess;
    int mStatus = 0;
    bool mIsTraced = false;
};
