#include "base/paths.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QTemporaryDir>

class TestPaths : public QObject {
    Q_OBJECT

  private slots:
    void Separators_data() {
        // '/' stands for the system's own
        Rows<QString, QString>({{"", ""}, {"a\\b/c", "a/b/c/"}, {"/a/", "/a/"}, {"\\a\\", "/a/"}});
    }
    void Separators() {
        const auto [path, withSeparator] = Row<QString, QString>();
        QCOMPARE(Paths::WithSeparator(path), QDir::toNativeSeparators(withSeparator));
    }

    void Find_data() {
        const Rows<QString, QString> row;
        row("other case everywhere", "skins/DEFAULT/Splash.BMP", "Skins/Default/splash.bmp");
        row("backslashes", "\\skins\\default\\", "Skins/Default");
        row("hidden", ".HIDDEN", ".hidden");
        row("accent", QStringLiteral("BÜRO"), QStringLiteral("büro"));
        row("missing file", "skins/default/none.bmp", "");
        row("below a file", "skins/default/splash.bmp/x", "");
        row("only begins the same", "skin", "");
        row("no name", "", "");
    }
    void Find() {
        const auto [name, found] = Row<QString, QString>();
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath("Skins/Default"));
        for (const QString& each :
             {QString("Skins/Default/splash.bmp"), QString(".hidden"), QStringLiteral("büro")})
            QVERIFY(WriteBytes(folder.filePath(each), ""));
        const QString full = found.isEmpty() ? QString() : folder.filePath(found);
        QCOMPARE(Paths::Find(folder.path(), name), QDir::toNativeSeparators(full));
    }

    void FindsTheExactNameFirst() {
        const QTemporaryDir folder;
        const QStringList names = {"A.jpg", "a.JPG", "a.jpg"};
        for (const QString& name : names) QVERIFY(WriteBytes(folder.filePath(name), ""));
        if (QDir(folder.path()).entryList(QDir::Files).size() < names.size())
            QSKIP("the file system takes these names for one");
        for (const QString& name : names)
            QCOMPARE(Paths::Find(folder.path(), name),
                     QDir::toNativeSeparators(folder.filePath(name)));
    }
};

QTEST_GUILESS_MAIN(TestPaths)
#include "test_paths.moc"
