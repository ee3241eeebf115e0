#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QObject>
#include <QStringList>

/// Records the texts of a label, in order, if every change happens in a queued call.
class LabelTexts : public QObject
{
public:
    explicit LabelTexts(const QLabel *label)
        : m_label(label)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    /// The texts from the first queued call until now, without repetitions.
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
