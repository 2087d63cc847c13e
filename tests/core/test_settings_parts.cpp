#include "core/command_line.h"
#include "core/interval.h"
#include "core/program_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class TestSettingsParts : public QObject {
    Q_OBJECT

  private slots:
    void IntervalIsSplit_data();
    void IntervalIsSplit();
    void IntervalIsRead_data();
    void IntervalIsRead();
    void FolderIsChosen_data();
    void FolderIsChosen();
    void SharedFilesAreFound();
    void CommandLine_data();
    void CommandLine();

  private:
    static void Make(const QString& path) {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
};

void TestSettingsParts::IntervalIsSplit_data() {
    QTest::addColumn<qint64>("total");
    QTest::addColumn<int>("framerate");
    QTest::addColumn<int>("uptime");
    const auto row = [](qint64 total, int framerate, int uptime) {
        QTest::addRow("%lld", static_cast<long long>(total)) << total << framerate << uptime;
    };
    row(-1, 1, 0);
    row(0, 1, 0);
    row(1, 1, 0);
    row(60'000, 60'000, 0);
    row(60'001, 1, 1);
    row(90'000, 30'000, 1);
    row(120'000, 60'000, 1);
    row(120'001, 1, 2);
    row(32'768LL * 60'000, 60'000, 32'767);
    row(qint64{1} << 60, 60'000, 32'767);
}

void TestSettingsParts::IntervalIsSplit() {
    QFETCH(qint64, total);
    const IntervalParts parts = SplitInterval(total);
    QTEST(parts.Framerate, "framerate");
    QTEST(parts.Uptime, "uptime");
    const qint64 longest = 32'768LL * 60'000;
    QCOMPARE(TotalInterval(parts), std::clamp<qint64>(total, 1, longest));
}

void TestSettingsParts::IntervalIsRead_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("milliseconds");
    const auto row = [](const QString& text, int milliseconds) {
        QTest::addRow("'%s'", qPrintable(text)) << text << milliseconds;
    };
    row("", 500);
    row("x", 60'000);
    row("0", 60'000);
    row("1", 1);
    row("500", 500);
    row("60000", 60'000);
    row("60001", 1);
    row("90000", 30'000);
    row("120000", 60'000);
    row("-5", 59'995);
    row("-59999", 1);
    row("-60000", 1);
    row("-99999999999", 1);
    row("2147483647", 23'647);
    row("99999999999", 23'647);
}

void TestSettingsParts::IntervalIsRead() {
    QFETCH(QString, text);
    QTEST(ReadInterval(text), "milliseconds");
}

void TestSettingsParts::FolderIsChosen_data() {
    QTest::addColumn<QString>("requested");  // below a temporary folder, as all of them
    QTest::addColumn<QString>("executable");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("chosen");  // empty: none
    QTest::addRow("requested") << "r"
                               << "exe"
                               << "u"
                               << "r";
    QTest::addRow("requested and new") << "new/r"
                                       << "exe"
                                       << "u"
                                       << "new/r";
    QTest::addRow("requested, but impossible") << "file/r"
                                               << "exe"
                                               << "u"
                                               << "";
    QTest::addRow("executable's own") << ""
                                      << "exe"
                                      << "u"
                                      << "exe";
    QTest::addRow("user's") << ""
                            << "gone"
                            << "u/new"
                            << "u/new";
    QTest::addRow("a file where the folder should be") << ""
                                                       << "file"
                                                       << "u"
                                                       << "u";
    QTest::addRow("no folder possible") << ""
                                        << "gone"
                                        << "file/u"
                                        << "";
    // Nobody can create files there, not even with every permission.
    if (QFileInfo("/proc/self").isDir())
        QTest::addRow("executable in a file system of the system") << ""
                                                                   << "/proc/self"
                                                                   << "u"
                                                                   << "u";
}

void TestSettingsParts::FolderIsChosen() {
    QFETCH(QString, requested);
    QFETCH(QString, executable);
    QFETCH(QString, user);
    QFETCH(QString, chosen);
    const QTemporaryDir base;
    Make(base.filePath("exe/stillpost"));
    Make(base.filePath("file"));
    const auto below = [&base](const QString& name) {
        return name.isEmpty() || name.startsWith(u'/') ? name : base.filePath(name);
    };
    const auto folder = ProgramFolder::Choose({below(requested), below(executable), below(user)});
    QCOMPARE(folder.has_value(), !chosen.isEmpty());
    if (!folder) return;
    QCOMPARE(folder->Folder, QDir::toNativeSeparators(below(chosen)));
    QVERIFY(QFileInfo(folder->Folder).isDir());
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(base.filePath("exe")).entryList(everything), QStringList("stillpost"));
}

void TestSettingsParts::SharedFilesAreFound() {
    const QTemporaryDir base;
    const auto folder =
        ProgramFolder::Choose({base.filePath("program"), base.filePath("bin"), QString()});
    QVERIFY(folder.has_value());
    QCOMPARE(folder->FindShared("Click.wav"), QString());
    // Each place goes before the one that was looked at so far.
    for (const char* place : {"share/stillpost/click.WAV", "bin/Click.wav", "program/CLICK.wav"}) {
        const QString file = base.filePath(QString::fromLatin1(place));
        Make(file);
        QCOMPARE(folder->FindShared("Click.wav"), QDir::toNativeSeparators(file));
    }
}

void TestSettingsParts::CommandLine_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("verbose");
    QTest::addColumn<bool>("autostarter");
    QTest::addColumn<QString>("fault");  // a part of it
    const auto row = [](const QString& line, const QString& folder, bool verbose, bool autostarter,
                        const QString& fault = {}) {
        QTest::addRow("%s", qPrintable(line)) << line << folder << verbose << autostarter << fault;
    };
    row("", "", false, false);
    row("/autostarter", "", false, true);
    row("/autostarter --verbose", "", true, true);
    row("--folder d --verbose /autostarter", "d", true, true);
    row("--folder=d=e", "d=e", false, false);
    row("/Autostarter", "", false, false);
    row("/autostarter /autostarter", "", false, false);
    row("/autostarter x", "", false, false);
    row("--folder", "", false, false, "--folder needs");
    row("--folder=", "", false, false, "--folder needs");
    row("--folder --verbose", "", false, false, "--folder needs");
    row("--folder /autostarter", "", false, false, "--folder needs");
    row("--folder a --folder b", "", false, false, "twice");
    row("--folders a", "", false, false, "--folders");
    row("-x", "", false, false, "-x");
}

void TestSettingsParts::CommandLine() {
    QFETCH(QString, line);
    QFETCH(QString, fault);
    const auto parsed = ::CommandLine::Parse(line.split(u' ', Qt::SkipEmptyParts));
    QCOMPARE(parsed.Fault.isEmpty(), fault.isEmpty());
    QVERIFY2(parsed.Fault.contains(fault), qPrintable(parsed.Fault));
    if (!fault.isEmpty()) return;
    QTEST(parsed.Folder, "folder");
    QTEST(parsed.Verbose, "verbose");
    QTEST(parsed.Autostarter, "autostarter");
    QVERIFY(!parsed.Help && !parsed.Version);
}

QTEST_GUILESS_MAIN(TestSettingsParts)
#include "test_settings_parts.moc"
