#include "tools/tour/Dialogs.h"

#include "tests/support/WindowDriver.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <chrono>

using std::chrono_literals::operator""ms;

namespace {

constexpr std::chrono::milliseconds timeToAppear = 300ms;

} // namespace

void lookAtDialog(const std::function<void()> &action, const std::function<void(QWidget *)> &look)
{
    QElapsedTimer shown;
    withModalDialogs(action, [&](QWidget *dialog) {
        if (!shown.isValid())
            shown.start();
        if (!shown.hasExpired(timeToAppear.count()))
            return;
        look(dialog);
        dialog->close();
    });
}

void lookAtMenu(QToolButton *button, const std::function<void()> &look)
{
    QTimer::singleShot(timeToAppear, button, [button, &look] {
        QMenu *const menu = button->menu();
        menu->setActiveAction(menu->actions().constFirst());
        look();
        menu->close();
    });
    button->showMenu();
}

void settle()
{
    QTest::qWait(static_cast<int>(timeToAppear.count()));
}
