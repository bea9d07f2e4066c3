#include "machine.h"

#include <sys/resource.h>
#include <sys/sysinfo.h>

#include <fstream>
#include <sstream>
#include <thread>

namespace velmora::bench {

namespace {

std::string processor() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name")) {
            return line.substr(line.find(':') + 2);
        }
    }
    return "an unknown processor";
}

} // namespace

std::string machine() {
    struct sysinfo system {};
    ::sysinfo(&system);
    rlimit descriptors{};
    ::getrlimit(RLIMIT_NOFILE, &descriptors);
    const auto loadOf = [&](int i) { return static_cast<double>(system.loads[i]) / (1 << SI_LOAD_SHIFT); };
    std::ostringstream text;
    text.precision(3);
    text << std::thread::hardware_concurrency() << " cores of " << processor() << ", "
         << static_cast<double>(system.totalram) * system.mem_unit / 1e9 << " GB of memory, "
         << descriptors.rlim_cur << " descriptors (at most " << descriptors.rlim_max << "), load "
         << loadOf(0) << ' ' << loadOf(1) << ' ' << loadOf(2);
    return text.str();
}

} // namespace velmora::bench
