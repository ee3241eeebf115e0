#pragma once

#include <QLabel>

/// A label that shortens a long path in the middle when it is drawn and shows the whole path in its tool tip.
///
/// text() returns the whole path.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(const QString &path, QWidget *parent);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QString visibleText() const;
};
