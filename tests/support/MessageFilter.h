#pragma once

/// Drops the messages that Qt writes for every polished widget or every window on the offscreen platform; a
/// test of thousands of steps would drown in them. All others go on to whoever had them before. Call once,
/// after the test framework has installed its own handler.
void dropRepeatedMessages();
