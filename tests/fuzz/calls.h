// The fuzz target, which drivers call with inputs. It aborts at a fault.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

// What the last input called.
const char *runningCall();
