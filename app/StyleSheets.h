#pragma once

#include <QLatin1StringView>
#include <QSize>
#include <QString>

/// The style sheets of the main window.
namespace StyleSheets {

extern const QLatin1StringView centralContainer;
extern const QLatin1StringView mainWindow;
extern const QLatin1StringView treeFrame;
extern const QLatin1StringView resultsTree;
extern const QLatin1StringView categoryButton;
extern const QLatin1StringView scanFolderList;
extern const QLatin1StringView addFolderButton;
extern const QLatin1StringView progressBar;
extern const QLatin1StringView scrollBar;
extern const QLatin1StringView treePart;
extern const QLatin1StringView folderName;
extern const QLatin1StringView addedFolderPath;
extern const QLatin1StringView borderless;
extern const QLatin1StringView loadingPanel;
extern const QLatin1StringView loadingLabel;

/// Style sheet of a white button with a blue outline; \a radius in pixels.
[[nodiscard]] QString outlineButton(int radius);

/// Style sheet of a button with a blue gradient; \a minimum size and \a radius in pixels.
[[nodiscard]] QString gradientButton(const QSize &minimum, int radius);

} // namespace StyleSheets
