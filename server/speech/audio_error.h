#pragma once

#include <stdexcept>

namespace velmora::server {

/// A file that holds no sound that can be read, or more than it costs to read is allowed to.
class AudioError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace velmora::server
