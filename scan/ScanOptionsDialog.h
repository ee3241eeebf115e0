#pragma once

#include "scan/ScanOptions.h"

#include <QDialog>

namespace Ui {
class ScanOptionsDialog;
}

/// Lets the user choose what a scan collects. Opens with every type selected and every skip rule on.
class ScanOptionsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ScanOptionsDialog(QWidget *parent = nullptr);
    ~ScanOptionsDialog() override;

    /// What the dialog shows now. The types come in the dialog's own order, archives first.
    [[nodiscard]] ScanOptions getOptions() const;

    /// Shows \a options. A unit that is none of "KB", "MB", "GB" leaves its box as it is.
    void setOptions(const ScanOptions &options);

private:
    void fitCaptions();

    Ui::ScanOptionsDialog *ui;
};
