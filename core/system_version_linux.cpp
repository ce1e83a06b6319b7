#include "core/system_version.h"

#include "core/kernel_release.h"

#include <sys/utsname.h>

namespace lum {

namespace {

class RunningKernel final : public SystemVersion {
public:
    std::optional<std::int32_t> majorNumber() const override { return release().majorNumber; }
    std::optional<std::int32_t> minorNumber() const override { return release().minorNumber; }

private:
    static KernelRelease release()
    {
        utsname names;
        return uname(&names) == 0 ? KernelRelease::parse(names.release) : KernelRelease {};
    }
};

}

const SystemVersion& systemVersion()
{
    static constinit RunningKernel kernel;
    return kernel;
}

}
