#include "core/settings/load_settings.h"
#include "core/settings/setting_table.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <QTemporaryDir>

using Written = QMap<QString, QString>;  // "Section/Key" and value

class TestSettings : public QObject {
    Q_OBJECT

  private slots:
    void WithoutAFile() {
        const QTemporaryDir empty;
        const Settings settings = LoadSettings(empty.filePath("ftpOptions.ini"));
        QCOMPARE(settings.lastpictureanz, 4);
        QCOMPARE(settings.TotalInterval(), 500);
        QCOMPARE(settings.JPGQuality, "50");
        QCOMPARE(settings.Offlinefile, "Offline.jpg");
        QCOMPARE(settings.WorkPath, Native(empty.path() + "/work/"));
        QVERIFY(QFileInfo(settings.WorkPath).isDir());
        QVERIFY(!settings.LocalMode());
        QCOMPARE(QDir(empty.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList("work"));
    }

    void ReadsEveryKey() {
        (void)Load({{"Einstellungen/Server", "ftp.example.com"}, {"Cameras/Cam0", "a|test:8x8"}});
        QSet<QString> expected;
        for (const SettingRow& row : SettingTable()) {
            const QString key = row.Section.toString() + u'/' + row.Key.toString();
            const int numbers = row.Key == u"Lin#" ? 8 : row.Key == u"Cam#" ? 2 : 1;
            for (int i = 0; row.ReadBy.contains(u"LoadSettings") && i < numbers; ++i)
                expected << QString(key).replace(u'#', QString::number(i));
        }
        QCOMPARE(QSet<QString>(asked.begin(), asked.end()), expected);
    }

    void ReadsInRange_data() {
        const Rows<QString, QString, int> row;
        row("too large", "Port", "65536", 21);
        row("nearest to too small", "lastpictureanz", "0", 1);
        row("nearest to too large", "lastpictureanz", "99999999999999", 1000);
        row("unknown mode", "Overlay", "6", 5);
        row("unknown place", "Position", "7", 0);
        row("without a range", "PositionX", "-40", -40);
    }
    void ReadsInRange() {
        const auto [key, text, number] = Row<QString, QString, int>();
        const Settings settings = Load({{"Einstellungen/" + key, text}});
        const QMap<QString, int> numbers = {{"Port", settings.Port},
                                            {"lastpictureanz", settings.lastpictureanz},
                                            {"Overlay", settings.Overlay},
                                            {"Position", settings.Position},
                                            {"PositionX", settings.PositionX}};
        QCOMPARE(numbers.value(key, -1), number);
    }

    void CheckBoxes_data() {
        // PictureEff
        Rows<QString, bool, bool>({{"", false, false},
                                   {"-1", true, false},
                                   {"0.5", true, false},
                                   {"true", false, true},
                                   {"True", false, false}});
    }
    void CheckBoxes() {
        const auto [text, on, effect] = Row<QString, bool, bool>();
        const Settings settings =
            Load({{"Einstellungen/Delete", text}, {"Einstellungen/PictureEff", text}});
        QCOMPARE(settings.Delete, on);
        QCOMPARE(settings.PictureEff, effect);
    }

    void TextLinesAndOverlayFile_data() {
        const Rows<QString, bool, bool> row;
        row("empty", "", true, false);
        row("3", "3", false, false);
        row("3x is 3, but not literally", "3x", true, false);
        row("4", "4", true, true);
    }
    void TextLinesAndOverlayFile() {
        const auto [mode, lines, file] = Row<QString, bool, bool>();
        const QString bitmap = folder.filePath("Overlay/Logo.BMP");
        QVERIFY(QDir(folder.path()).mkpath("Overlay") && WriteBytes(bitmap, ""));
        const Settings settings = Load({{"Einstellungen/Overlay", mode},
                                        {"Einstellungen/Overlayfile", "logo.bmp"},
                                        {"Text/Lin7", "eight"}});
        QCOMPARE(settings.Lin[7] == "eight", lines);
        QCOMPARE(settings.OverlayPath, file ? Native(bitmap) : QString());
    }

    void Folders_data() {
        const Rows<QString, QString, bool> row;
        const QString path = folder.path();
        row("empty", "", "", false);
        row("full", path + "/none", path + "/none/", false);
        row("relative", "a\\b", path + "/a/b/", true);
        row("drive of the other system", "Q:\\pics", "Q:/pics/", false);
        row("root of the other system", "/none/pics", "/none/pics/", false);
    }
    void Folders() {
        const auto [written, path, created] = Row<QString, QString, bool>();
        const QString full = Native(path);
        QCOMPARE(Load({{"Einstellungen/ArchivePath", written}}).ArchivePath, full);
        QCOMPARE(!full.isEmpty() && QFileInfo(full).isDir(), created);
        // Pictures are made all the same where the working folder is not there.
        QCOMPARE(Load({{"Einstellungen/Path", written}}).WorkPath,
                 created ? full : Native(folder.path() + "/work/"));
        // Of a server's folders nothing is known here, and without a server there is none.
        const auto verzeichnis = [&](const QString& server) {
            return Load({{"Einstellungen/Server", server}, {"Einstellungen/Verzeichnis", written}})
                .Verzeichnis;
        };
        QCOMPARE(verzeichnis("local"), full);
        QCOMPARE(verzeichnis("LOCAL"), written);
        QCOMPARE(verzeichnis(""), QString());
    }

    void Cameras() {
        Written written = {
            {"Cameras/Cam0", "a|1"}, {"Cameras/Cam1", "b|2"}, {"Cameras/Cam3", "d|4"}};
        QCOMPARE(Load(written).Cameras, (QStringList{"a|1", "b|2"}));
        const SettingSource endless = [](const QString& section, const QString&) {
            return section == "Cameras" ? QString("x|y") : QString();
        };
        QCOMPARE(LoadSettings(folder.path(), endless).Cameras.size(), 100);
    }

    void DocumentShowsTheTable() {
        QStringList shown;
        QString section;
        for (const QString& line : Lines(QStringLiteral(STILLPOST_DOCS "/settings.md"))) {
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

    void ExampleWorks() {
        const QTemporaryDir program;
        const QString copy = program.filePath("ftpOptions.ini");
        QVERIFY(QFile::copy(QStringLiteral(STILLPOST_DOCS "/ftpOptions.example.ini"), copy));
        const Settings settings = LoadSettings(copy);
        QVERIFY(settings.LocalMode());
        QCOMPARE(settings.Verzeichnis, Native(program.path() + "/public/"));
        QVERIFY(QFileInfo(settings.Verzeichnis).isDir());
        QCOMPARE(settings.Cameras.value(0).section(u'|', 0, 0), settings.Treiber);

        QString section;
        QStringList mentioned;
        for (const QString& line : Lines(copy)) {
            if (line.startsWith(u'[')) section = line.mid(1, line.size() - 2);
            const qsizetype begin = line.startsWith(u';') ? 1 : 0;
            mentioned << section + u'/' + line.mid(begin).section(u'=', 0, 0);
        }
        for (const SettingRow& row : SettingTable()) {
            const QString name =
                row.Section.toString() + u'/' + row.Key.toString().replace(u'#', u'0');
            QVERIFY2(mentioned.contains(name), qPrintable(name));
        }
    }

  private:
    // As the system writes it.
    static QString Native(const QString& path) { return QDir::toNativeSeparators(path); }

    static QStringList Lines(const QString& file) {
        return QString::fromUtf8(ReadBytes(file)).split(u'\n');
    }

    // Loads what is written and notes the keys that are asked for.
    [[nodiscard]] Settings Load(const Written& written) {
        asked.clear();
        return LoadSettings(folder.path(), [&](const QString& section, const QString& key) {
            asked << section + u'/' + key;
            return written.value(asked.last());
        });
    }

    QStringList asked;
    QTemporaryDir folder;
};

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
