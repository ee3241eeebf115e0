#include "scan/FileNames.h"

#include <QFile>
#include <QTest>

using Qt::StringLiterals::operator""_s;

/// A file name becomes a path that opens the same file, or it is left out.
class tst_fileNames : public QObject
{
    Q_OBJECT

private slots:
    void convertsPathsBackToTheirNames_data();
    void convertsPathsBackToTheirNames();
    void decodesEveryByteSequenceExactlyOrRejectsIt();
    void detectsNamesThatWindowsChanges_data();
    void detectsNamesThatWindowsChanges();
};

void tst_fileNames::convertsPathsBackToTheirNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("decodable");
    const auto row = [](const char *description, const QByteArray &name, bool decodable) {
        QTest::newRow(description) << name << decodable;
    };

    row("plain", "report.txt", true);
    row("U+FEFF first", "\xEF\xBB\xBFreport.txt", true);
    row("U+FEFF twice first", "\xEF\xBB\xBF\xEF\xBB\xBFreport.txt", true);
    row("U+FEFF only", "\xEF\xBB\xBF", true);
    row("U+FEFF inside", "rep\xEF\xBB\xBFort.txt", true);
    row("U+FEFF last", "report.txt\xEF\xBB\xBF", true);
    row("U+FFFE first", "\xEF\xBF\xBEreport.txt", true);
    row("noncharacters", "\xEF\xB7\x90\xEF\xBF\xBF\xF4\x8F\xBF\xBF", true);
    row("highest character", "\xF4\x8F\xBF\xBF", true);
    row("replacement character", "\xEF\xBF\xBD", true);
    row("combining mark first",
        "\xCC\x81"
        "e",
        true);
    row("control characters", "\x01\x1B[31m\x7F\xC2\x85", true);
    row("spaces at both ends", " a ", true);
    row("placeholder", "%1%2", true);
    row("255 bytes", QByteArray(255, 'n'), true);
    row("765 bytes", QByteArray("\xE7\x85\xA7").repeated(255), true);
    row("lone continuation byte", "a\x80", false);
    row("truncated at the end", "a\xE7\x85", false);
    row("truncated inside",
        "\xE7\x85"
        "a",
        false);
    row("overlong slash", "\xC0\xAF", false);
    row("overlong letter of three bytes", "\xE0\x81\xA1", false);
    row("high surrogate", "\xED\xA0\x80", false);
    row("pair of surrogates", "\xED\xA0\xBD\xED\xB8\x80", false);
    row("beyond U+10FFFF", "\xF4\x90\x80\x80", false);
    row("five bytes", "\xF8\x88\x80\x80\x80", false);
    row("0xFF", "\xFF", false);
}

void tst_fileNames::convertsPathsBackToTheirNames()
{
    QFETCH(const QByteArray, name);
    QFETCH(const bool, decodable);
    QCOMPARE(isDecodable(name), decodable);
    if (!decodable)
        return;
#ifdef Q_OS_WIN
    QSKIP("Names are UTF-16 here: QFile::encodeName() cannot hold them all");
#endif
    for (const QString &folder : {u"/"_s, u"/home/\uFEFFme/"_s, u"\uFEFFfolder/"_s, QString()})
        QCOMPARE(QFile::encodeName(decodedPath(folder, name)), QFile::encodeName(folder) + name);
}

/// Every sequence of three bytes that does not start with ASCII.
void tst_fileNames::decodesEveryByteSequenceExactlyOrRejectsIt()
{
#ifdef Q_OS_WIN
    QSKIP("Names are UTF-16 here: QFile::encodeName() cannot hold them all");
#endif
    const QString folder = u"/"_s;
    QByteArray name(3, '\0');
    qsizetype decodable = 0;
    for (int sequence = 0x80'00'00; sequence <= 0xFF'FF'FF; ++sequence) {
        name[0] = static_cast<char>(sequence >> 16);
        name[1] = static_cast<char>(sequence >> 8);
        name[2] = static_cast<char>(sequence);
        if (!isDecodable(name))
            continue;
        ++decodable;
        if (QFile::encodeName(decodedPath(folder, name)) != '/' + name)
            QFAIL(name.toHex().constData());
    }
    // A two-byte character and an ASCII one, or a three-byte character that is not a surrogate.
    constexpr qsizetype expected = (0x800 - 0x80) * 0x80 + (0x10000 - 0x800 - 0x800);
    QCOMPARE(decodable, expected);
}

void tst_fileNames::detectsNamesThatWindowsChanges_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("kept");
    const auto row = [](const QString &name, bool kept) {
        QTest::addRow("%s", qPrintable(name)) << name << kept;
    };

    for (const QString &name : {u"report.txt"_s, u".hidden"_s, u" leading"_s, u"a..b"_s,
             u"\uFEFFreport.txt"_s, u"console"_s, u"CON1"_s, u"COM"_s, u"COM10"_s, u"COMA"_s, u"LPTX.txt"_s,
             u"nulls.txt"_s, u"xCON"_s, u"照片.jpg"_s, u"\U0001F382"_s})
        row(name, true);
    for (const QString &name : {u"stop."_s, u"stop.txt."_s, u"..."_s, u"blank "_s, u" "_s, u"blank. "_s,
             u"con"_s, u"CON"_s, u"con.txt"_s, u"con .txt"_s, u"nul.tar.gz"_s, u"AUX"_s, u"prn.jpg"_s,
             u"COM1"_s, u"com0"_s, u"lpt9.txt"_s, u"COM¹"_s, u"LPT³.x"_s, u"CONIN$"_s, u"conout$"_s,
             u"file:stream"_s, u"a\\b"_s, u"a/b"_s})
        row(name, false);
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("high surrogate alone") << u"a"_s + QChar(0xD83D) << false;
    QTest::newRow("low surrogate first") << QChar(0xDE00) + u"a"_s << false;
}

void tst_fileNames::detectsNamesThatWindowsChanges()
{
    QFETCH(const QString, name);
    QTEST(keepsItsNameOnWindows(name), "kept");
}

QTEST_APPLESS_MAIN(tst_fileNames)
#include "tst_fileNames.moc"
