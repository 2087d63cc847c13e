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
