#pragma once

#include <QString>

/// The scan page's text for a scan that has taken \a milliseconds: "hh:mm:ss", which starts anew after 24
/// hours.
[[nodiscard]] QString elapsedTimeText(qint64 milliseconds);
