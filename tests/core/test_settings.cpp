#include "core/load_settings.h"
#include "core/setting_table.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Written = QMap<QString, QString>;  // "Section/Key" and value

// Gives the values of `written` and notes the keys in the order in which they are asked for.
struct Source {
    Written Values;
    QStringList Asked = {};

    SettingSource Function() {
        return [this](const QString& section, const QString& key) {
            Asked << section + u'/' + key;
            return Values.value(Asked.last());
        };
    }
};

}  // namespace

class TestSettings : public QObject {
    Q_OBJECT

  private slots:
    void WithoutAFile();
    void ReadsEveryKeyInOrder();
    void ReadsInRange_data();
    void ReadsInRange();
    void CheckBoxes_data();
    void CheckBoxes();
    void LocalMode_data();
    void LocalMode();
    void TextLinesAndOverlayFile_data();
    void TextLinesAndOverlayFile();
    void Folders_data();
    void Folders();
    void Cameras();
    void DocumentShowsTheTable();
    void ExampleWorks();

  private:
    // As the system writes it.
    static QString Native(const QString& path) { return QDir::toNativeSeparators(path); }

    [[nodiscard]] Settings Load(const Written& written) const {
        Source source{written};
        return LoadSettings(folder.path(), source.Function());
    }

    QTemporaryDir folder;
};

void TestSettings::WithoutAFile() {
    const QTemporaryDir empty;
    const Settings settings = LoadSettings(empty.filePath("ftpOptions.ini"));
    QCOMPARE(settings.Port, 21);
    QCOMPARE(settings.lastpictureanz, 4);
    QCOMPARE(settings.TotalInterval(), 500);
    QCOMPARE(settings.JPGQuality, "50");
    QCOMPARE(settings.Offlinefile, "Offline.jpg");
    QCOMPARE(settings.Overlayfile, "Overlay.bmp");
    QCOMPARE(settings.WorkPath, Native(empty.path() + "/work/"));
    QVERIFY(QFileInfo(settings.WorkPath).isDir());
    QVERIFY(!settings.LocalMode());
    QCOMPARE(QDir(empty.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("work"));
}

void TestSettings::ReadsEveryKeyInOrder() {
    Source source{{{"Einstellungen/Server", "ftp.example.com"}, {"Cameras/Cam0", "a|test:8x8"}}};
    (void)LoadSettings(folder.path(), source.Function());
    source.Asked.removeDuplicates();

    const QStringList first = {"lastpictures", "lastpictureanz", "Server"};
    const QStringList last = {"Path", "Sprache"};
    QStringList expected;
    for (const QString& key : first) expected << "Einstellungen/" + key;
    for (const SettingRow& row : SettingTable()) {
        const QString key = row.Key.toString();
        if (!row.ReadBy.contains(u"LoadSettings") || first.contains(key) || last.contains(key))
            continue;
        const int numbers = key == "Lin#" ? 8 : key == "Cam#" ? 2 : 1;
        for (int i = 0; i < numbers; ++i)
            expected << row.Section.toString() + u'/' +
                            QString(key).replace(u'#', QString::number(i));
    }
    for (const QString& key : last) expected << "Einstellungen/" + key;
    QCOMPARE(source.Asked, expected);
}

void TestSettings::ReadsInRange_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    const auto row = [](const QString& key, const QString& text, int number) {
        QTest::addRow("%s '%s'", qPrintable(key), qPrintable(text)) << key << text << number;
    };
    row("Port", "2121", 2121);
    row("Port", "65535", 65535);
    row("Port", "65536", 21);
    row("Port", "0", 21);
    row("Port", "-1", 21);
    row("Port", "ftp", 21);
    row("Port", "2121 (proxy)", 2121);
    row("lastpictureanz", "7", 7);
    row("lastpictureanz", "0", 1);
    row("lastpictureanz", "99999999999999", 1000);
    row("Quali", "3", 0);
    row("Uptime", "-3", 0);
    row("Uptime", "40000", 32767);
    row("Framerate", "90000", 30000);
    row("Overlay", "", 0);
    row("Overlay", "5", 5);
    row("Overlay", "6", 5);
    row("Overlay", "-1", 5);
    row("Position", "6", 6);
    row("Position", "7", 0);
    row("PositionX", "-40", -40);
    row("Color", "16777215", 16777215);
    row("Color", "16777216", 0);
    row("Size", "-8", 0);
}

void TestSettings::ReadsInRange() {
    QFETCH(QString, key);
    QFETCH(QString, text);
    const Settings settings = Load({{"Einstellungen/" + key, text}});
    const QMap<QString, int> numbers = {
        {"Port", settings.Port},           {"lastpictureanz", settings.lastpictureanz},
        {"Quali", settings.Quali},         {"Uptime", settings.Uptime},
        {"Framerate", settings.Framerate}, {"Overlay", settings.Overlay},
        {"Position", settings.Position},   {"PositionX", settings.PositionX},
        {"Color", settings.Color},         {"Size", settings.Size}};
    QVERIFY(numbers.contains(key));
    QTEST(numbers[key], "number");
}

void TestSettings::CheckBoxes_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("effect");  // PictureEff
    QTest::addRow("empty") << "" << false << false;
    QTest::addRow("0") << "0" << false << false;
    QTest::addRow("1") << "1" << true << false;
    QTest::addRow("-1") << "-1" << true << false;
    QTest::addRow("half") << "0.5" << true << false;
    QTest::addRow("true") << "true" << false << true;
    QTest::addRow("True") << "True" << false << false;
}

void TestSettings::CheckBoxes() {
    QFETCH(QString, text);
    const Settings settings =
        Load({{"Einstellungen/Delete", text}, {"Einstellungen/PictureEff", text}});
    QTEST(settings.Delete, "on");
    QTEST(settings.PictureEff, "effect");
}

void TestSettings::LocalMode_data() {
    QTest::addColumn<QString>("server");
    QTest::addColumn<bool>("local");
    QTest::addColumn<QString>("verzeichnis");
    const QString path = folder.path();
    QTest::addRow("Local") << "Local" << true << Native(path + "/pub/");
    QTest::addRow("local") << "local" << true << Native(path + "/pub/");
    QTest::addRow("LOCAL") << "LOCAL" << false << "pub";
    QTest::addRow("server") << "localhost" << false << "pub";
    QTest::addRow("none") << "" << false << "";
}

void TestSettings::LocalMode() {
    QFETCH(QString, server);
    Source source{{{"Einstellungen/Server", server}, {"Einstellungen/Verzeichnis", "pub"}}};
    const Settings settings = LoadSettings(folder.path(), source.Function());
    QTEST(settings.LocalMode(), "local");
    QTEST(settings.Verzeichnis, "verzeichnis");
    QCOMPARE(source.Asked.contains("Einstellungen/Verzeichnis"), !server.isEmpty());
}

void TestSettings::TextLinesAndOverlayFile_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("lines");
    QTest::addColumn<bool>("file");
    QTest::addRow("empty") << "" << true << false;
    QTest::addRow("2") << "2" << true << false;
    QTest::addRow("3") << "3" << false << false;
    QTest::addRow("3x is 3, but not literally") << "3x" << true << false;
    QTest::addRow("4") << "4" << true << true;
}

void TestSettings::TextLinesAndOverlayFile() {
    QFETCH(QString, mode);
    QFETCH(bool, file);
    const QTemporaryDir own;
    QVERIFY(QDir(own.path()).mkpath("Overlay"));
    QFile bitmap(own.filePath("Overlay/Logo.BMP"));
    QVERIFY(bitmap.open(QIODevice::WriteOnly));
    Source source{{{"Einstellungen/Overlay", mode},
                   {"Einstellungen/Overlayfile", "logo.bmp"},
                   {"Text/Lin7", "eight"}}};
    const Settings settings = LoadSettings(own.path(), source.Function());
    QTEST(settings.Lin[7] == "eight", "lines");
    QCOMPARE(settings.OverlayPath, file ? Native(bitmap.fileName()) : QString());
}

void TestSettings::Folders_data() {
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("full");
    QTest::addColumn<bool>("created");
    const QString path = folder.path();
    QTest::addRow("empty") << ""
                           << "" << false;
    QTest::addRow("full") << path + "/none" << path + "/none/" << false;
    QTest::addRow("full, with separator") << path + "/none/" << path + "/none/" << false;
    QTest::addRow("relative") << "a\\b" << path + "/a/b/" << true;
    QTest::addRow("drive of the other system") << "C:\\pics"
                                               << "C:/pics/" << false;
}

void TestSettings::Folders() {
    QFETCH(QString, written);
    QFETCH(QString, full);
    full = Native(full);
    QCOMPARE(Load({{"Einstellungen/ArchivePath", written}}).ArchivePath, full);
    QTEST(!full.isEmpty() && QFileInfo(full).isDir(), "created");
    if (!written.isEmpty()) QCOMPARE(Load({{"Einstellungen/Path", written}}).WorkPath, full);
}

void TestSettings::Cameras() {
    Written written = {{"Cameras/Cam0", "a|1"}, {"Cameras/Cam1", "b|2"}, {"Cameras/Cam3", "d|4"}};
    QCOMPARE(Load(written).Cameras, (QStringList{"a|1", "b|2"}));
    const SettingSource endless = [](const QString& section, const QString&) {
        return section == "Cameras" ? QString("x|y") : QString();
    };
    QCOMPARE(LoadSettings(folder.path(), endless).Cameras.size(), 100);
}

void TestSettings::DocumentShowsTheTable() {
    QFile file(QStringLiteral(STILLPOST_DOCS "/settings.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList shown;
    QString section;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString& line : lines) {
        if (line.startsWith("## Section ")) section = line.section(u'"', 1, 1);
        // Without the last cell, which explains the key to people.
        if (line.startsWith("| `")) shown << section + line.section(u'|', 0, 6);
    }

    const QStringList forms = {"text", "number", "check box", "true/false"};
    QStringList table;
    for (const SettingRow& row : SettingTable()) {
        const QString range =
            row.HasRange()
                ? QStringLiteral("%1 to %2, else %3").arg(row.Least).arg(row.Most).arg(row.Else)
                : QString();
        table << QStringLiteral("%1| `%2` | %3 | %4 | %5 | %6 | %7 ")
                     .arg(row.Section, row.Key, forms[static_cast<int>(row.Form)], row.Default,
                          range, row.WrittenBy, row.ReadBy);
    }
    QCOMPARE(shown, table);
}

void TestSettings::ExampleWorks() {
    const QTemporaryDir program;
    const QString copy = program.filePath("ftpOptions.ini");
    QVERIFY(QFile::copy(QStringLiteral(STILLPOST_DOCS "/ftpOptions.example.ini"), copy));
    const Settings settings = LoadSettings(copy);
    QVERIFY(settings.LocalMode());
    QCOMPARE(settings.Verzeichnis, Native(program.path() + "/public/"));
    QVERIFY(QFileInfo(settings.Verzeichnis).isDir());
    QCOMPARE(settings.Cameras.value(0).section(u'|', 0, 0), settings.Treiber);

    QFile file(copy);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QString section;
    QStringList mentioned;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString& line : lines) {
        if (line.startsWith(u'[')) section = line.mid(1, line.size() - 2);
        const qsizetype begin = line.startsWith(u';') ? 1 : 0;
        mentioned << section + u'/' + line.mid(begin).section(u'=', 0, 0);
    }
    for (const SettingRow& row : SettingTable()) {
        const QString name = row.Section.toString() + u'/' + row.Key.toString().replace(u'#', u'0');
        QVERIFY2(mentioned.contains(name), qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
