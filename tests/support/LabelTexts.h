#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QObject>
#include <QStringList>

/// Notes the different texts that a label has shown, in order, as long as every change is made in a queued
/// call.
class LabelTexts : public QObject
{
public:
    explicit LabelTexts(const QLabel *label)
        : m_label(label)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    /// From the text at the first queued call to the present one.
    [[nodiscard]] QStringList texts()
    {
        noteText();
        return m_texts;
    }

protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override
    {
        if (event->type() == QEvent::MetaCall)
            noteText();
        return false;
    }

private:
    void noteText()
    {
        if (m_texts.isEmpty() || m_texts.last() != m_label->text())
            m_texts.append(m_label->text());
    }

    const QLabel *const m_label;
    QStringList m_texts;
};
