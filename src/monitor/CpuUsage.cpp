#include "monitor/CpuUsage.h"

#include "monitor/clsCPUUsage.h"
#include "monitor/clsCPUUsageNT.h"

namespace zarn {

// Every system that this program is built for counts times.
bool IsNtFamily() {
    return true;
}

std::unique_ptr<CpuUsage> MakeCpuUsage(SystemFigures& figures, bool ntFamily) {
    if (ntFamily) {
        return std::make_unique<clsCPUUsageNT>(figures);
    }
    return std::make_unique<clsCPUUsage>(figures);
}

}  // namespace zarn
