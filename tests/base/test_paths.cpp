#include "base/paths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestPaths : public QObject {
    Q_OBJECT

  private slots:
    void Separators_data();
    void Separators();
    void Find_data();
    void Find();
    void FindsTheExactNameFirst();
};

void TestPaths::Separators_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("withSeparator");  // '/' stands for the system's own
    QTest::addRow("empty") << ""
                           << "";
    QTest::addRow("mixed") << "a\\b/c"
                           << "a/b/c/";
    QTest::addRow("ends in one") << "/a/"
                                 << "/a/";
    QTest::addRow("ends in the other one") << "\\a\\"
                                           << "/a/";
    QTest::addRow("root") << "/"
                          << "/";
}

void TestPaths::Separators() {
    QFETCH(QString, path);
    QFETCH(QString, withSeparator);
    QCOMPARE(Paths::WithSeparator(path), QDir::toNativeSeparators(withSeparator));
}

void TestPaths::Find_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::addRow("as it is") << "Skins/Default/splash.bmp"
                              << "Skins/Default/splash.bmp";
    QTest::addRow("other case everywhere") << "skins/DEFAULT/Splash.BMP"
                                           << "Skins/Default/splash.bmp";
    QTest::addRow("backslashes") << "\\skins\\default\\"
                                 << "Skins/Default";
    QTest::addRow("hidden") << ".HIDDEN"
                            << ".hidden";
    QTest::addRow("accent") << QStringLiteral("BÜRO") << QStringLiteral("büro");
    QTest::addRow("missing file") << "skins/default/none.bmp"
                                  << "";
    QTest::addRow("missing folder") << "none/splash.bmp"
                                    << "";
    QTest::addRow("below a file") << "skins/default/splash.bmp/x"
                                  << "";
    QTest::addRow("only begins the same") << "skin"
                                          << "";
    QTest::addRow("no name") << ""
                             << "";
}

void TestPaths::Find() {
    QFETCH(QString, name);
    QFETCH(QString, found);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkpath("Skins/Default"));
    for (const QString& each :
         {QString("Skins/Default/splash.bmp"), QString(".hidden"), QStringLiteral("büro")}) {
        QFile file(folder.filePath(each));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const QString full = found.isEmpty() ? QString() : folder.filePath(found);
    QCOMPARE(Paths::Find(folder.path(), name), QDir::toNativeSeparators(full));
}

void TestPaths::FindsTheExactNameFirst() {
    const QTemporaryDir folder;
    const QStringList names = {"A.jpg", "a.JPG", "a.jpg"};
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    if (QDir(folder.path()).entryList(QDir::Files).size() < names.size())
        QSKIP("the file system takes these names for one");
    for (const QString& name : names)
        QCOMPARE(Paths::Find(folder.path(), name), QDir::toNativeSeparators(folder.filePath(name)));
}

QTEST_GUILESS_MAIN(TestPaths)
#include "test_paths.moc"
