#include "app/StyleSheets.h"
#include "tests/support/WindowDriver.h"

#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>

using Qt::StringLiterals::operator""_s;

namespace {

/// One rule of a style sheet; the selector is empty for a sheet of bare declarations.
struct Rule
{
    QString selector;
    QStringList declarations;

    friend bool operator==(const Rule &, const Rule &) = default;
};

QStringList declarationsOf(const QString &block)
{
    QStringList declarations;
    for (const QString &part : block.split(u';', Qt::SkipEmptyParts)) {
        if (QString declaration = part.simplified(); !declaration.isEmpty())
            declarations.append(declaration.replace(QRegularExpression(u" ?: ?"_s), u": "_s));
    }
    return declarations;
}

QList<Rule> rulesOf(const QString &sheet)
{
    if (!sheet.contains(u'{'))
        return {{QString(), declarationsOf(sheet)}};
    QList<Rule> rules;
    const QRegularExpression rule(u"([^{}]*)\\{([^{}]*)\\}"_s);
    for (const QRegularExpressionMatch &match : rule.globalMatch(sheet))
        rules.append({match.captured(1).simplified(), declarationsOf(match.captured(2))});
    return rules;
}

QString gradient(const QString &from, const QString &to)
{
    // In the notation of declarationsOf().
    return u"background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 %1, stop: 1 %2)"_s.arg(from, to);
}

QList<Rule> outline(const QString &radius)
{
    return {{u"QPushButton"_s, {u"color: #2D85FF"_s, u"background: #fff"_s, u"border: 1px solid #2D85FF"_s,
                                   u"border-radius: %1"_s.arg(radius), u"font-size: 13px"_s,
                                   u"min-height: 28px"_s, u"outline: none"_s, u"min-width: 40px"_s}},
        {u"QPushButton:hover"_s, {u"border-color: #b5dafc"_s, u"background: #f6fafd"_s, u"color: #176bcb"_s}},
        {u"QPushButton:pressed"_s,
            {u"border-color: #8dc2f7"_s, u"background: #eaf4fb"_s, u"color: #1a6db6"_s}}};
}

QList<Rule> filled(const QString &width, const QString &height, const QString &radius)
{
    return {{u"QPushButton"_s,
                {u"min-width: %1"_s.arg(width), u"min-height: %1"_s.arg(height), u"color: white"_s,
                    gradient(u"#409eff"_s, u"#1769ff"_s), u"border: none"_s,
                    u"border-radius: %1"_s.arg(radius), u"font-size: 13px"_s, u"letter-spacing: 1px"_s}},
        {u"QPushButton:hover"_s, {gradient(u"#388bff"_s, u"#155ee0"_s)}},
        {u"QPushButton:pressed"_s, {u"background: #1769ff"_s}}};
}

QList<Rule> categoryButton()
{
    return {
        {u"QPushButton"_s,
            {u"background: transparent"_s, u"border: none"_s, u"color: #7a8faa"_s, u"font-size: 15px"_s,
                u"font-family: 'Segoe UI', 'PingFang SC', 'Microsoft YaHei', sans-serif"_s,
                u"padding: 6px 15px"_s, u"border-radius: 16px"_s, u"min-width: 75px"_s, u"min-height: 28px"_s,
                u"margin-right: 12px"_s, u"font-weight: 400"_s, u"transition: all 0.3s"_s}},
        {u"QPushButton[selected=\"true\"]"_s,
            {u"background: #D2E8FF"_s, u"color: #2A82FF"_s, u"font-weight: 600"_s}},
        {u"QPushButton:hover"_s, {u"background: #f4faff"_s, u"color: #317aff"_s}}};
}

QList<Rule> mainWindow()
{
    return {{u"QPushButton#btnHelp, QToolButton#btnMenu"_s, {u"border: none"_s, u"background: transparent"_s,
                                                                u"border-radius: 6px"_s, u"padding: 4px"_s}},
        {u"QPushButton#btnHelp"_s, {u"image: url(: /icon/images/help.png)"_s}},
        {u"QToolButton#btnMenu"_s, {u"image: url(: /icon/images/menu.png)"_s}},
        {u"QPushButton#btnHelp:hover"_s,
            {u"background: #d0eaff"_s, u"image: url(: /icon/images/help_hover.png)"_s}},
        {u"QToolButton#btnMenu:hover"_s,
            {u"background: #d0eaff"_s, u"image: url(: /icon/images/menu_hover.png)"_s}},
        {u"QToolButton#btnMenu::menu-indicator"_s, {u"image: none"_s}},
        {u"QRadioButton::indicator"_s, {u"width: 10px"_s, u"height: 10px"_s, u"border-radius: 5px"_s,
                                           u"border: 1px solid #888"_s, u"background: #f5f5f5"_s}},
        {u"QRadioButton::indicator:checked"_s, {u"background: #4CAF50"_s, u"border: 1px solid #4CAF50"_s}},
        {u"QRadioButton::indicator:hover"_s, {u"border: 1px solid #1E88E5"_s}}};
}

QList<Rule> resultsTree()
{
    return {{u"QTreeWidget"_s, {u"font-size: 12px"_s, u"border: none"_s, u"background: transparent"_s}},
        {u"QTreeWidget::item"_s, {u"min-height: 33px"_s, u"padding: 6px 0 5px 0"_s, u"border: none"_s,
                                     u"outline: none"_s, u"color: #222"_s}},
        {u"QTreeWidget::item:hover"_s, {u"background: #eaf4fb"_s}},
        {u"QTreeWidget::item:selected"_s,
            {u"background: transparent !important"_s, u"color: #222 !important"_s, u"border: none"_s,
                u"outline: none"_s}},
        {u"QTreeWidget::item:focus"_s,
            {u"background: transparent"_s, u"color: #222"_s, u"border: none"_s, u"outline: none"_s}},
        {u"QTreeWidget::branch:selected"_s, {u"background: transparent"_s}}};
}

} // namespace

Q_DECLARE_METATYPE(Rule)

/// The style sheet of each widget, declaration by declaration.
class tst_windowStyle : public QObject
{
    Q_OBJECT

private slots:
    void stylesTheWidget_data();
    void stylesTheWidget();
    void stylesTheCentralContainer();
    void keepsTheStrayQuoteOfTheFolderList();
    void stylesTheScrollBars();
    void doesNotStyleOtherWidgets();
    void hasEveryPicture_data();
    void hasEveryPicture();
};

void tst_windowStyle::stylesTheWidget_data()
{
    QTest::addColumn<QList<Rule>>("rules");

    QTest::newRow("MainWindow") << mainWindow();
    QTest::newRow("treeWidgetBg") << QList<Rule>{
        {u"QWidget"_s, {u"border: 1px solid #dde6ee"_s, u"background: #fff"_s}}};
    QTest::newRow("treeDuplicates") << resultsTree();
    for (const char *name :
        {"btnAll", "btnPictures", "btnVideos", "btnAudios", "btnDocuments", "btnArchives", "btnOthers"})
        QTest::newRow(name) << categoryButton();
    for (const char *name : {"btnScanOptions", "btnStopScan"})
        QTest::newRow(name) << outline(u"8px"_s);
    for (const char *name : {"btnSelectAll", "btnUnselect", "btnBack"})
        QTest::newRow(name) << outline(u"15px"_s);
    QTest::newRow("btnStartScan") << filled(u"120px"_s, u"35px"_s, u"8px"_s);
    QTest::newRow("btnRemoveSelected") << filled(u"90px"_s, u"30px"_s, u"15px"_s);
    QTest::newRow("btnAddFolder") << QList<Rule>{
        {u"QPushButton"_s,
            {u"min-width: 90px"_s, u"min-height: 36px"_s, u"background: #f7faff"_s, u"border: none"_s,
                u"padding-left: 0"_s, u"color: #1769ff"_s, u"font-size: 15px"_s, u"font-weight: 600"_s,
                u"border-radius: 10px"_s, u"transition: background 0.2s"_s}},
        {u"QPushButton:hover"_s, {u"background: #eaf1ff"_s, u"color: #0055ea"_s}}};
    QTest::newRow("progressBar") << QList<Rule>{
        {u"QProgressBar"_s,
            {u"border: none"_s, u"border-radius: 10px"_s, u"background: #eaf0f6"_s, u"height: 10px"_s,
                u"text-align: center"_s, u"color: white"_s, u"font-size: 12px"_s}},
        {u"QProgressBar::chunk"_s,
            {u"border-radius: 10px"_s,
                u"background: qlineargradient(x1: 0, y1: 0, x2: 1, y2: 0, stop: 0 #5899ff, stop: 1 #1e68fa)"_s}}};
}

void tst_windowStyle::stylesTheWidget()
{
    QFETCH(const QList<Rule>, rules);
    WindowDriver driver;
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    const QWidget *const widget =
        driver.window().objectName() == name ? &driver.window() : driver.find(QTest::currentDataTag());
    const QList<Rule> actual = rulesOf(widget->styleSheet());
    for (qsizetype i = 0; i < std::min(actual.size(), rules.size()); ++i) {
        QCOMPARE(actual.at(i).selector, rules.at(i).selector);
        QCOMPARE(actual.at(i).declarations, rules.at(i).declarations);
    }
    QCOMPARE(actual.size(), rules.size());
}

void tst_windowStyle::stylesTheCentralContainer()
{
    WindowDriver driver;
    QCOMPARE(driver.window().centralWidget()->styleSheet(), u"background-color: #fff;"_s);
    QCOMPARE(driver.find("treeWidgetBg")->styleSheet(),
        u"QWidget {  border: 1px solid #dde6ee;  background: #fff;}"_s);
}

// Kept deliberately: Qt reads the quote as the start of a string and drops the rest of the sheet. Without it,
// a clicked row would look different.
void tst_windowStyle::keepsTheStrayQuoteOfTheFolderList()
{
    WindowDriver driver;
    const QString sheet = driver.find("listScanFolders")->styleSheet();
    const QRegularExpression rule(
        u"^\\s*QListWidget \\{([^}]*)\\}\\s*QListWidget::item:selected \\{\\s*background: #F0F0F0;\" *//.*\\n"
        "\\s*color: #222; *//.*\\n\\s*\\}\\s*$"_s);
    const QRegularExpressionMatch match = rule.match(sheet);
    QVERIFY2(match.hasMatch(), qPrintable(sheet));
    QCOMPARE(declarationsOf(match.captured(1)),
        (QStringList{u"background: #f3f3f3"_s, u"border: 1px solid #dde6ee"_s, u"border-radius: 10px"_s,
            u"padding: 6px"_s}));
}

void tst_windowStyle::stylesTheScrollBars()
{
    WindowDriver driver;
    for (const char *name : {"listScanFolders", "treeDuplicates"}) {
        const auto *const area = driver.find<QAbstractScrollArea>(name);
        for (const QScrollBar *bar : {area->verticalScrollBar(), area->horizontalScrollBar()})
            QCOMPARE(bar->styleSheet(), QString(StyleSheets::scrollBar));
    }
}

void tst_windowStyle::doesNotStyleOtherWidgets()
{
    WindowDriver driver;
    for (const char *name :
        {"stackedWidget", "page", "scanpage", "duplicatespage", "duplicatespage_unused", "menubar", "label",
            "label_2", "label_3", "label_4", "labelFilesScanned", "labelDuplicatesFound", "labelElapsedTime",
            "labelScanStatus", "labelCurrentFile", "labelFilesScannedValue", "labelDuplicatesFoundValue",
            "labelElapsedTimeValue", "labelStatsInfo", "btnHelp", "btnMenu", "topBar"})
        QCOMPARE(driver.find(name)->styleSheet(), QString());
}

void tst_windowStyle::hasEveryPicture_data()
{
    QTest::addColumn<QString>("path");
    for (const char *name : {"logo", "add_icon", "delete_icon", "help", "help_hover", "menu", "menu_hover",
             "scan_image_bg_1", "scan_bg"})
        QTest::newRow(name) << u":/icon/images/%1.png"_s.arg(QLatin1StringView(name));
    QTest::newRow("lock") << u":/icons/lock.png"_s;
}

void tst_windowStyle::hasEveryPicture()
{
    QFETCH(const QString, path);
    const MainWindow window;
    QVERIFY(!QPixmap(path).isNull());
}

QTEST_MAIN(tst_windowStyle)
#include "tst_windowStyle.moc"
