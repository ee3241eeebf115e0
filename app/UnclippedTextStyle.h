#pragma once

#include <QProxyStyle>

/// The application's style, but a caption too wide for its place runs on into the padding around it instead
/// of being cut off. For buttons whose sizes are fixed while the platform's font is not.
class UnclippedTextStyle : public QProxyStyle
{
    Q_OBJECT

public:
    explicit UnclippedTextStyle(QObject *parent)
    {
        setParent(parent);
    }

    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
        const QString &text, QPalette::ColorRole textRole) const override
    {
        QProxyStyle::drawItemText(painter, rect, flags | Qt::TextDontClip, palette, enabled, text, textRole);
    }
};
