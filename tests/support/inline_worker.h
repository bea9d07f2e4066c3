#pragma once

#include "foundation/worker.h"

namespace velmora::test {

/// Does its work at once; the result comes with the next turn of the loop all the same.
class InlineWorker final : public Worker {
public:
    void start(std::function<void()> work) override { work(); }
};

} // namespace velmora::test
