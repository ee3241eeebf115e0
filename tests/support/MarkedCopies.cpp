#include "tests/support/MarkedCopies.h"

#include "tests/support/TestFiles.h"

#include <QTest>

using Qt::StringLiterals::operator""_s;

void MarkedCopies::reset()
{
    m_driver = std::make_unique<WindowDriver>();
    m_tree = std::make_unique<HostileTree>();
    m_copies = {path(u"tree/1.jpg"_s), path(u"tree/2.jpg"_s), path(u"tree/3.jpg"_s)};
    for (const QString &copy : std::as_const(m_copies))
        writeFile(copy, m_content);
    writeFile(path(u"outside/far.jpg"_s), "far away");
}

bool MarkedCopies::scanAndMark(const QStringList &marked)
{
    m_driver->setFolders({path(u"tree"_s)});
    if (!m_driver->scan())
        return false;
    m_driver->checkAll(false);
    for (const QString &each : marked)
        m_driver->check(each);
    return true;
}

void MarkedCopies::checkDeletion(Fate fate)
{
    DiskState expected = m_tree->state();
    expected.remove(m_tree->rawName(m_copies.at(2)));
    if (fate == Fate::Deleted)
        expected.remove(m_tree->rawName(m_copies.at(1)));
    const QList<ShownBox> boxes = m_driver->clickAndCloseBoxes("btnRemoveSelected");
    QCOMPARE(boxes.value(0), deletionBox(fate == Fate::Deleted ? 2 : 1, fate == Fate::Failed ? 1 : 0));
    QVERIFY(m_tree->state() == expected);
}
