#include "core/command_line.h"
#include "core/interval.h"
#include "core/program_folder.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

class TestSettingsParts : public QObject {
    Q_OBJECT

  private slots:
    void IntervalIsSplit_data() {
        Rows<qint64, int, int>({{-1, 1, 0},
                                {60'000, 60'000, 0},
                                {60'001, 1, 1},
                                {120'000, 60'000, 1},
                                {qint64{1} << 60, 60'000, 32'767}});
    }
    void IntervalIsSplit() {
        const auto [total, framerate, uptime] = Row<qint64, int, int>();
        const IntervalParts parts = SplitInterval(total);
        QCOMPARE(parts.Framerate, framerate);
        QCOMPARE(parts.Uptime, uptime);
        const qint64 longest = 32'768LL * 60'000;
        QCOMPARE(TotalInterval(parts), std::clamp<qint64>(total, 1, longest));
    }

    void IntervalIsRead_data() {
        Rows<QString, int>({{"", 500},
                            {"x", 60'000},
                            {"1", 1},
                            {"60000", 60'000},
                            {"60001", 1},
                            {"-5", 59'995},
                            {"-60000", 1},
                            {"-99999999999", 1},
                            {"99999999999", 23'647}});
    }
    void IntervalIsRead() {
        const auto [text, milliseconds] = Row<QString, int>();
        QCOMPARE(ReadInterval(text), milliseconds);
    }

    void FolderIsChosen_data() {
        const Rows<QString, QString, QString, QString> row;  // the last: what is chosen
        row("requested and new", "new/r", "exe", "u", "new/r");
        row("requested, but impossible", "file/r", "exe", "u", "");
        row("executable's own", "", "exe", "u", "exe");
        row("user's", "", "gone", "u/new", "u/new");
        row("no folder possible", "", "gone", "file/u", "");
        // Nobody can create files there, not even with every permission.
        if (QFileInfo("/proc/self").isDir())
            row("executable in a file system of the system", "", "/proc/self", "u", "u");
    }
    void FolderIsChosen() {
        const auto [requested, executable, user, chosen] =
            Row<QString, QString, QString, QString>();
        const QTemporaryDir base;
        Make(base.filePath("exe/stillpost"));
        Make(base.filePath("file"));
        const auto below = [&base](const QString& name) {
            return name.isEmpty() || name.startsWith(u'/') ? name : base.filePath(name);
        };
        const auto folder =
            ProgramFolder::Choose({below(requested), below(executable), below(user)});
        QCOMPARE(folder.has_value(), !chosen.isEmpty());
        if (!folder) return;
        QCOMPARE(folder->Folder, QDir::toNativeSeparators(below(chosen)));
        QVERIFY(QFileInfo(folder->Folder).isDir());
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(base.filePath("exe")).entryList(everything), QStringList("stillpost"));
    }

    void SharedFilesAreFound() {
        const QTemporaryDir base;
        const auto folder =
            ProgramFolder::Choose({base.filePath("program"), base.filePath("bin"), QString()});
        QVERIFY(folder.has_value());
        QCOMPARE(folder->FindShared("Click.wav"), QString());
        // Each place goes before the one that was looked at so far.
        for (const char* place :
             {"share/stillpost/click.WAV", "bin/Click.wav", "program/CLICK.wav"}) {
            const QString file = base.filePath(QString::fromLatin1(place));
            Make(file);
            QCOMPARE(folder->FindShared("Click.wav"), QDir::toNativeSeparators(file));
        }
    }

    void CommandLine_data() {
        Rows<QString, QString, bool, bool, QString>(
            {{"", "", false, false, ""},
             {"/autostarter --verbose", "", true, true, ""},
             {"--folder d --verbose /autostarter", "d", true, true, ""},
             {"--folder=d=e", "d=e", false, false, ""},
             {"/autostarter x", "", false, false, ""},
             {"--folder", "", false, false, "--folder needs"},
             {"--folder=", "", false, false, "--folder needs"},
             {"--folder --verbose", "", false, false, "--folder needs"},
             {"--folder /autostarter", "", false, false, "--folder needs"},
             {"--folder a --folder b", "", false, false, "twice"},
             {"-x", "", false, false, "-x"}});
    }
    void CommandLine() {
        const auto [line, folder, verbose, autostarter, fault] =
            Row<QString, QString, bool, bool, QString>();
        const auto parsed = ::CommandLine::Parse(line.split(u' ', Qt::SkipEmptyParts));
        QCOMPARE(parsed.Fault.isEmpty(), fault.isEmpty());
        QVERIFY2(parsed.Fault.contains(fault), qPrintable(parsed.Fault));
        if (!fault.isEmpty()) return;
        QCOMPARE(parsed.Folder, folder);
        QCOMPARE(parsed.Verbose, verbose);
        QCOMPARE(parsed.Autostarter, autostarter);
        QVERIFY(!parsed.Help && !parsed.Version);
    }

  private:
    static void Make(const QString& path) {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QVERIFY(WriteBytes(path, ""));
    }
};

QTEST_GUILESS_MAIN(TestSettingsParts)
#include "test_settings_parts.moc"
