// Window layer: a dialog.

#pragma once

#include "scan/ScanOptions.h"

#include <QDialog>

namespace Ui {
class ScanOptionsDialog;
}

/// The dialog in which the user chooses what a scan collects. Opens with every type and every skip rule
/// checked.
class ScanOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ScanOptionsDialog(QWidget *parent = nullptr);
    ~ScanOptionsDialog() override;

    /// The options that the dialog shows. The file types are in the order of the dialog, archives first.
    [[nodiscard]] ScanOptions getOptions() const;

    /// Shows \a options. A unit other than "KB", "MB" and "GB" leaves its box unchanged.
    void setOptions(const ScanOptions &options);

private:
    void fitCaptions();

    Ui::ScanOptionsDialog *ui;
};
