#pragma once

#include <QLabel>

/// A label for a path that may be too long: shortened in the middle where it is drawn, whole in its tool tip.
/// text() is always the whole path.
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
