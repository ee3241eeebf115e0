#include "tests/support/OpenedUrls.h"
#include "tests/support/WindowDriver.h"

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

using Qt::StringLiterals::operator""_s;

/// The help button, the menu and the About box. Addresses are recorded instead of opened.
class tst_helpMenu : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void opensTheMenuOnPress();
    void hasThreeEntriesInOrder();
    void opensTheHelpPage() const;
    void opensTheHelpPageOnRelease() const;
    void opensTheSupportPage() const;
    void showsAbout() const;

private:
    static QMenu *menu(WindowDriver &driver)
    {
        return driver.find<QToolButton>("btnMenu")->menu();
    }

    OpenedUrls m_opened{{u"http"_s, u"https"_s}};
};

void tst_helpMenu::init()
{
    m_opened.urls.clear();
}

void tst_helpMenu::opensTheMenuOnPress()
{
    WindowDriver driver;
    auto *const button = driver.find<QToolButton>("btnMenu");
    QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
    bool opened = false;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        if (QWidget *const popup = QApplication::activePopupWidget()) {
            opened = popup == menu(driver);
            popup->close();
        }
    });
    poll.start(5);
    // Returns when the menu is closed.
    QTest::mousePress(button, Qt::LeftButton);
    QTRY_VERIFY(opened);
}

void tst_helpMenu::hasThreeEntriesInOrder()
{
    WindowDriver driver;
    QCOMPARE(menu(driver)->parentWidget(), &driver.window());
    QStringList entries;
    for (const QAction *action : menu(driver)->actions())
        entries.append(action->text());
    QCOMPARE(entries, (QStringList{u"About"_s, u"Support"_s, u"Help"_s}));
}

void tst_helpMenu::opensTheHelpPage() const
{
    WindowDriver driver;
    driver.click("btnHelp");
    menu(driver)->actions().at(2)->trigger();

    QCOMPARE(m_opened.urls.size(), 2);
    QCOMPARE(m_opened.urls.at(0), m_opened.urls.at(1));
    QCOMPARE(m_opened.urls.at(0).scheme(), u"https"_s);
    QCOMPARE(m_opened.urls.at(0).path(), u"/online-help/quillory.html"_s);
    QVERIFY(m_opened.urls.at(0).host().endsWith(u".example"_s));
}

void tst_helpMenu::opensTheHelpPageOnRelease() const
{
    WindowDriver driver;
    auto *const button = driver.find<QPushButton>("btnHelp");
    QTest::mousePress(button, Qt::LeftButton);
    QVERIFY(m_opened.urls.isEmpty());
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(m_opened.urls.size(), 1);
}

void tst_helpMenu::opensTheSupportPage() const
{
    WindowDriver driver;
    menu(driver)->actions().at(1)->trigger();
    QCOMPARE(m_opened.urls.size(), 1);
    QCOMPARE(m_opened.urls.at(0).scheme(), u"https"_s);
    QCOMPARE(m_opened.urls.at(0).path(), u"/support.html"_s);
    QVERIFY(m_opened.urls.at(0).host().endsWith(u".example"_s));
}

void tst_helpMenu::showsAbout() const
{
    WindowDriver driver;
    QStringList paragraphs;

    withModalDialogs([&driver] { menu(driver)->actions().at(0)->trigger(); },
        [&](QWidget *dialog) {
            const auto *const box = qobject_cast<QMessageBox *>(dialog);
            dialog->close();
            QVERIFY(box);
            QVERIFY(box->isModal());
            QCOMPARE(box->parentWidget(), &driver.window());
            QCOMPARE(box->windowTitle(), u"About"_s);
            QVERIFY(!Qt::mightBeRichText(box->text()));
            paragraphs = box->text().split(u"\n\n"_s);
        });

    QCOMPARE(paragraphs.size(), 3);
    QCOMPARE(paragraphs.at(0), QStringLiteral("Quillory v" PROGRAM_VERSION));
    QCOMPARE(paragraphs.at(1),
        u"A powerful and easy-to-use duplicate file finder tool that helps you find and remove duplicate "
        u"files from "
        "your Windows or Mac computer, freeing up valuable disk space and optimizing your system's performance."_s);
    QVERIFY(!paragraphs.at(2).trimmed().isEmpty());
    QVERIFY(m_opened.urls.isEmpty());
}

QTEST_MAIN(tst_helpMenu)
#include "tst_helpMenu.moc"
