#pragma once

/// Drops messages that repeat for every widget or window, and forwards all others to the previous handler.
/// For tests with thousands of steps. Call after the test framework has installed its handler.
void dropRepeatedMessages();
