#include "app/log.h"

#include <cstdio>

namespace velmora::server {

void log(std::string_view line) {
    std::fprintf(stderr, "velmora-server: %.*s\n", static_cast<int>(line.size()), line.data());
}

} // namespace velmora::server
