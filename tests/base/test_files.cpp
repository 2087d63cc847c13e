#include "base/paths.h"
#include "base/whole_file.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QTemporaryDir>

#include <chrono>
#include <thread>

class TestFiles : public QObject {
    Q_OBJECT

  private slots:
    void Find_data() {
        const Rows<QString, QString> row;
        row("other case everywhere", "skins/DEFAULT/Splash.BMP", "Skins/Default/splash.bmp");
        row("backslashes", "\\skins\\default\\", "Skins/Default");
        row("accent", QStringLiteral("BÜRO"), QStringLiteral("büro"));
        row("below a file", "skins/default/splash.bmp/x", "");
        row("only begins the same", "skin", "");
    }
    void Find() {
        const auto [name, found] = Row<QString, QString>();
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath("Skins/Default"));
        for (const QString& each : {QString("Skins/Default/splash.bmp"), QStringLiteral("büro")})
            QVERIFY(WriteBytes(folder.filePath(each), ""));
        const QString full = found.isEmpty() ? QString() : folder.filePath(found);
        QCOMPARE(Paths::Find(folder.path(), name), QDir::toNativeSeparators(full));
    }

    void Replaces_data() {
        const Rows<QString> row;
        row("names of other languages", QStringLiteral("Jürgen Ω/写真.jpg"));
        // Together longer than the 260 characters that a system may stop at.
        row("deep",
            QString("a folder with quite a long name that goes on/").repeated(8) + "pw.jpg");
    }
    void Replaces() {
        const auto [name] = Row<QString>();
        const QTemporaryDir folder;
        const QFileInfo file(folder.filePath(name));
        QVERIFY(QDir().mkpath(file.absolutePath()));
        const QString source = folder.filePath("source");
        for (const char* content : {"old", "new"}) {
            QVERIFY(WriteBytes(source, content));
            QVERIFY(WholeFile::Copy(source, file.filePath()));
            QCOMPARE(ReadBytes(file.filePath()), content);
        }
        QCOMPARE(file.dir().entryList(QDir::Files).filter("pw.jpg.").size(), 0);
    }

    // A system may refuse to replace what somebody has open.
    void WaitsForAReader() {
        const QTemporaryDir folder;
        const QString source = folder.filePath("source");
        const QString target = folder.filePath("pw.jpg");
        QVERIFY(WriteBytes(source, "new"));
        QVERIFY(WriteBytes(target, "old"));
        QFile reader(target);
        QVERIFY(reader.open(QIODevice::ReadOnly));
        std::thread closing([&reader] {
            std::this_thread::sleep_for(std::chrono::milliseconds(60));
            reader.close();
        });
        const bool replaced = WholeFile::Copy(source, target);
        closing.join();
        QVERIFY(replaced);
        QCOMPARE(ReadBytes(target), "new");
    }
};

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
