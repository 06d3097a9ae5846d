#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "messages/sessionlog.h"
#include "tests/faults/faultfixture.h"
#include "tests/support/filecontents.h"

namespace
{
/// A home folder that exists during the object's lifetime.
class Home
{
public:
    explicit Home(const QString &path)
        : _before(qgetenv("HOME"))
    {
        qputenv("HOME", QFile::encodeName(path));
    }
    ~Home() { qputenv("HOME", _before); }

private:
    Q_DISABLE_COPY_MOVE(Home)
    const QByteArray _before;
};
} // namespace

/// Tests that files that cannot be opened or written do not block the user.
class TestFileSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSessionLogIsNoHindrance_data();
    void theSessionLogIsNoHindrance();
    void aLogThatCantBeKeptIsNoHindrance_data();
    void aLogThatCantBeKeptIsNoHindrance();
    void aLogOfFourMegabytesIsKeptWhole();
};

void TestFileSystem::theSessionLogIsNoHindrance_data()
{
    QTest::addColumn<QString>("home");
    QTest::addColumn<QString>("log");
    QTest::newRow("the disk is full") << ""
                                      << "/dev/full";
    QTest::newRow("a folder has its name") << ""
                                           << "folder";
    QTest::newRow("there is no home folder") << "nowhere"
                                             << "";
}

void TestFileSystem::theSessionLogIsNoHindrance()
{
    QFETCH(QString, home);
    QFETCH(QString, log);
    const QTemporaryDir folder;
    const Home ours(folder.filePath(home));
    const QString path = folder.filePath(QStringLiteral("zvinstall.log"));
    if (log == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(path));
    else if (!log.isEmpty())
        QVERIFY(QFile::link(log, path));

    FaultFixture fixture;
    openSessionLog();
    FaultFixture::listen([](QtMsgType type, const QString &message) {
        zvMessageOutput(type, message.toLocal8Bit().constData());
    });
    QCOMPARE(fixture.walkAgain(), QString());
    theSessionLog.setDevice(nullptr);
}

void TestFileSystem::aLogThatCantBeKeptIsNoHindrance_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("the disk is full") << "/dev/full" << QStringList();
    QTest::newRow("the file can't be made")
        << "/nowhere/log.txt" << QStringList{"Couldn't open file: %1: No such file or directory"};
}

void TestFileSystem::aLogThatCantBeKeptIsNoHindrance()
{
    QFETCH(QString, target);
    QFETCH(QStringList, messages);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.txt"));
    QVERIFY(QFile::link(target, path));
    FaultFixture fixture(tersestTolvar(), {QStringLiteral("B"), QStringLiteral("b"), path});
    QCOMPARE(fixture.walkAgain(), QString());
    QCOMPARE(fixture.walk.messages(), messages.replaceInStrings("%1", path));
}

void TestFileSystem::aLogOfFourMegabytesIsKeptWhole()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.txt"));
    DeviceConfig setup = tersestTolvar();
    setup.logText.clear();
    constexpr qsizetype length = 4L * 1024 * 1024;
    for (int number = 0; setup.logText.size() < length; ++number)
        setup.logText += "line " + QByteArray::number(number) + " of a <long> & dull story\n";
    FaultFixture fixture(setup, {QStringLiteral("B"), QStringLiteral("b"), path});
    QCOMPARE(fixture.walkAgain(), QString());
    QVERIFY(contents(path) == setup.logText);
}

QTEST_MAIN(TestFileSystem)
#include "tst_filesystem.moc"
