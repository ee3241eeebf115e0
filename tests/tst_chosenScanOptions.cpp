#include "scan/ScanOptionsDialog.h"

#include "tests/support/OptionsDialog.h"
#include "tests/support/WindowDriver.h"

#include <QComboBox>
#include <QSpinBox>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// The check boxes, sizes and units that the dialog shows when it opens next.
QString shownNext(WindowDriver &driver)
{
    QString shown;
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [&shown](QWidget *dialog) {
            shown = u"%1 %2 %3 %4 %5"_s.arg(checks(dialog),
                QString::number(child<QSpinBox>(dialog, "spinMinSize")->value()),
                child<QComboBox>(dialog, "comboMinUnit")->currentText(),
                QString::number(child<QSpinBox>(dialog, "spinMaxSize")->value()),
                child<QComboBox>(dialog, "comboMaxUnit")->currentText());
            qobject_cast<QDialog *>(dialog)->reject();
        });
    return shown;
}

const auto allDefaults = u"xxxxxx xxxx 0 KB 0 KB"_s;

} // namespace

/// Which options the dialog shows when it opens again: the chosen ones or the defaults.
class tst_chosenScanOptions : public QObject
{
    Q_OBJECT

private slots:
    void writesDebugLinesWhenOpened();
    void showsDefaultsOnFirstOpening();
    void showsStoredSettingsWhenASkipRuleIsOn();
    void showsDefaultsAgainWithoutSkipRules();
    void showsDefaultsAgainWithoutTypes();
    void changesNothingWhenNotAccepted_data();
    void changesNothingWhenNotAccepted();
};

void tst_chosenScanOptions::writesDebugLinesWhenOpened()
{
    WindowDriver driver;
    QTest::ignoreMessage(QtDebugMsg, "ScanOptions Slot Triggered!");
    QTest::ignoreMessage(QtDebugMsg, "chkSkipSystem checked: true");
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [&driver](QWidget *dialog) {
            const bool isOptions = qobject_cast<ScanOptionsDialog *>(dialog);
            qobject_cast<QDialog *>(dialog)->reject();
            QVERIFY(isOptions);
            QVERIFY(dialog->isModal());
            QCOMPARE(dialog->parentWidget(), &driver.window());
        });
    QVERIFY(!driver.window().findChild<ScanOptionsDialog *>());
}

void tst_chosenScanOptions::showsDefaultsOnFirstOpening()
{
    WindowDriver driver;
    QCOMPARE(shownNext(driver), allDefaults);
    // The dialog was rejected, so no skip rule is on and the dialog shows the defaults again.
    QCOMPARE(shownNext(driver), allDefaults);
}

void tst_chosenScanOptions::showsStoredSettingsWhenASkipRuleIsOn()
{
    for (const char *rule : skipBoxes) {
        WindowDriver driver;
        driver.chooseOptions([rule](QWidget *dialog) {
            checkAll(dialog, skipBoxes, false);
            checkAll(dialog, typeBoxes, false);
            child(dialog, rule)->setChecked(true);
            child(dialog, "chkTypeAudio")->setChecked(true);
            child<QSpinBox>(dialog, "spinMinSize")->setValue(3);
            child<QComboBox>(dialog, "comboMinUnit")->setCurrentText(u"MB"_s);
            child<QSpinBox>(dialog, "spinMaxSize")->setValue(400);
            child<QComboBox>(dialog, "comboMaxUnit")->setCurrentText(u"GB"_s);
        });
        QString skips;
        for (const char *name : skipBoxes)
            skips += name == rule ? u'x' : u'-';
        QCOMPARE(shownNext(driver), u"--x--- %1 3 MB 400 GB"_s.arg(skips));
    }
}

void tst_chosenScanOptions::showsDefaultsAgainWithoutSkipRules()
{
    WindowDriver driver;
    driver.chooseOptions([](QWidget *dialog) {
        checkAll(dialog, skipBoxes, false);
        child(dialog, "chkTypePhoto")->setChecked(false);
        child<QSpinBox>(dialog, "spinMinSize")->setValue(3);
    });
    QCOMPARE(shownNext(driver), allDefaults);
}

void tst_chosenScanOptions::showsDefaultsAgainWithoutTypes()
{
    WindowDriver driver;
    driver.chooseOptions([](QWidget *dialog) {
        checkAll(dialog, typeBoxes, false);
        child(dialog, "chkSkipDesktop")->setChecked(false);
    });
    QCOMPARE(shownNext(driver), allDefaults);
}

void tst_chosenScanOptions::changesNothingWhenNotAccepted_data()
{
    QTest::addColumn<bool>("cancel");
    QTest::newRow("Cancel") << true;
    QTest::newRow("closed") << false;
}

void tst_chosenScanOptions::changesNothingWhenNotAccepted()
{
    QFETCH(const bool, cancel);
    WindowDriver driver;
    driver.chooseOptions([](QWidget *dialog) { child(dialog, "chkTypeVideo")->setChecked(false); });
    const QString stored = shownNext(driver);
    QCOMPARE(stored, u"xxx-xx xxxx 0 KB 0 KB"_s);
    withModalDialogs([&driver] { driver.click("btnScanOptions"); },
        [cancel](QWidget *dialog) {
            checkAll(dialog, typeBoxes, true);
            checkAll(dialog, skipBoxes, false);
            child<QSpinBox>(dialog, "spinMaxSize")->setValue(5);
            if (cancel)
                child<QPushButton>(dialog, "btnCancelScanOptions")->click();
            else
                dialog->close();
        });
    QCOMPARE(shownNext(driver), stored);
}

QTEST_MAIN(tst_chosenScanOptions)
#include "tst_chosenScanOptions.moc"
