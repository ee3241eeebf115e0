// Window layer: a text of the scan page.

#pragma once

#include <QString>

/// \a milliseconds as "hh:mm:ss", the elapsed time on the scan page. Wraps after 24 hours.
[[nodiscard]] QString elapsedTimeText(qint64 milliseconds);
