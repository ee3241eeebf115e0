#pragma once

#include <functional>

/// Called often by a long operation, on several threads. True asks the operation to end early.
using AbandonCheck = std::function<bool()>;
