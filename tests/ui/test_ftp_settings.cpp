#include "base/paths.h"
#include "base/profile_file.h"
#include "support/data_rows.h"
#include "ui/settings/folder_list.h"
#include "ui/settings/frm_pfad.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/settings/ftp/offline_group.h"
#include "ui/settings/ftp/trial_panel.h"
#include "ui/settings/ftp/trial_texts.h"
#include "ui/settings_fixture.h"
#include "ui/texts/languages.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSignalSpy>

using enum Texts::Language;

namespace {

// The FTP settings of a program with two offline pictures and two dial-up entries.
class Fixture : public SettingsFixture {
  public:
    Fixture() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, Folder.path());
        System.Dial.EntryList = {"Home", "Work"};
        AddPicture("Closed.png", {32, 24});
        AddPicture("Offline.jpg", {64, 48});
        Write("");
    }

    void AddPicture(const QString& name, const QSize& size) const {
        QDir().mkpath(Folder.filePath("Offline"));
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(Qt::red);
        picture.save(Folder.filePath("Offline/" + name));
    }

    Languages Tables{*Core, Words};
    frmFTP Window{Around(), Tables, nullptr};
    FtpAccessGroup& Access = *Window.Access;
    OfflineGroup& Offline = *Window.Offline;
    TrialPanel& Trial = *Window.Trial;
};

}  // namespace

class TestFtpSettings : public QObject {
    Q_OBJECT

  private slots:
    void SavesWhatItShowsAndShowsWhatItSaved() {
        Fixture fixture;
        const QString saved =
            "[Einstellungen]\nServer=ftp.a.org\nVerzeichnis=web/cam\nUser=me\nPW=\" p$@:!ü; \"\n"
            "Port=2121\nDelete=1\nAnwahl=1\nAbwahl=1\nAWName=Work\nAWCon=1\nAutostart=1\n"
            "lastpictures=1\nlastpictureanz=7\nOfflinePic=1\nUseOfflineFilter=1\nOfflinefilter=0\n"
            "Offlinefile=Closed.png\nQuali=2\n";
        fixture.Write(saved);
        const QStringList before = fixture.Lines();
        fixture.Window.Open();
        QCOMPARE(fixture.Access.txtPW->text(), " p$@:!ü; ");
        QVERIFY(fixture.Window.Save());
        QCOMPARE(fixture.Lines().mid(0, before.size()), before);
        QCOMPARE(fixture.Boxes.Shown, QStringList());
        QCOMPARE(fixture.Core->FTP1.RemotePort(), 2121);

        fixture.Window.Open();
        for (NumberBox* number : {fixture.Access.txtPort, fixture.Window.txtHistory}) {
            number->selectAll();
            QTest::keyClick(number, Qt::Key_Delete);
        }
        fixture.Window.cbQuality->setCurrentIndex(1);
        emit fixture.Window.cbQuality->activated(1);
        QTest::keyClick(&fixture.Window, Qt::Key_Return);
        const QStringList lines = fixture.Lines();
        for (const char* line : {"Port=21", "lastpictureanz=4", "Quali=1", "JPGQuality=60"})
            QVERIFY2(lines.contains(QString::fromLatin1(line)), line);
    }

    void CarelessFilesOpenAndSaveValidValues() {
        Fixture fixture;
        fixture.Write(
            "[Einstellungen]\nPort=99999\nlastpictures=9\nlastpictureanz=-3\nQuali=best\n"
            "AWName=gone\nAWCon=77\nOfflinefile=gone.jpg\nOfflinefilter=-4\nAnwahl=yes\n");
        fixture.Window.Open();
        QCOMPARE(fixture.Window.cbConnection->currentText(), "gone");
        QCOMPARE(fixture.Offline.cbOffline->currentText(), "gone.jpg");
        QVERIFY(fixture.Window.Save());
        const QString valid =
            "Port=21 lastpictures=1 lastpictureanz=1 Quali=0 AWName=gone AWCon=2 "
            "Offlinefile=gone.jpg Offlinefilter=2 Anwahl=0 Server= Verzeichnis= User= PW= "
            "OfflinePic=0 UseOfflineFilter=0 Delete=0 Abwahl=0 Autostart=0";
        const QStringList lines = fixture.Lines();
        for (const QString& line : valid.split(u' '))
            QVERIFY2(lines.contains(line), qPrintable(line));
    }

    void LocalModeNeedsAFolder_data() {
        const Rows<QString, QString> row;
        row("missing", "/no/such/folder", "/no/such/folder/");
        row("of another system", "Q:\\pictures", "Q:/pictures/");
        row("none", "", "");
    }
    void LocalModeNeedsAFolder() {
        const auto [typed, shown] = Row<QString, QString>();
        Fixture fixture;
        fixture.Window.Open();
        fixture.Access.txtVerzeichnis->setText("on/the/server");
        fixture.Access.optLocal->click();
        QCOMPARE(fixture.Access.txtVerzeichnis->text(), QString());
        fixture.Access.txtVerzeichnis->setText(typed);
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Window.isVisible());
        QCOMPARE(fixture.Boxes.Shown,
                 QStringList("Stillpost: The directory " + Paths::Native(shown) +
                             " does not exist!\r\nPlease you check your input!"));
        QCOMPARE(fixture.Lines(), QStringList());
        const QTemporaryDir folder;
        fixture.Access.btnFolder->click();
        auto* chooser = fixture.Access.findChild<frmPfad*>();
        QTRY_VERIFY(!chooser->Dir1->Reading());
        chooser->txtFolder->setText(folder.path());
        chooser->btnSave->click();
        QTRY_COMPARE(fixture.Access.txtVerzeichnis->text(), Paths::WithSeparator(folder.path()));
        QVERIFY(fixture.Window.Save());
        QCOMPARE(
            fixture.Lines().mid(0, 2),
            QStringList({"Server=Local", "Verzeichnis=" + Paths::WithSeparator(folder.path())}));
        fixture.Window.Open();
        QVERIFY(fixture.Access.optLocal->isChecked());
        fixture.Access.optServer->click();
        QCOMPARE(fixture.Access.txtVerzeichnis->text(), QString());
        QVERIFY(fixture.Access.txtServer->isEnabled());
    }

    // Whoever knows the word may type it, on the way to "localhost" too.
    void TheWordForLocalModeIsUnderstood() {
        Fixture fixture;
        fixture.Window.Open();
        QTest::keyClicks(fixture.Access.txtServer, "localhost");
        QVERIFY(!fixture.Access.Local());
        QCOMPARE(fixture.Access.Server(), "localhost");
        fixture.Access.txtServer->setText("Local");
        fixture.Access.txtVerzeichnis->setText(fixture.Folder.path());
        QVERIFY(fixture.Window.Save());
        QCOMPARE(fixture.Lines().value(1),
                 "Verzeichnis=" + Paths::WithSeparator(fixture.Folder.path()));
    }

    void ExamplesAreNeverUsed() {
        Fixture fixture;
        fixture.Write("[Einstellungen]\nServer=ftp.ihr-server.example\n");
        fixture.Window.Open();
        QCOMPARE(fixture.Access.txtServer->text(), QString());
        fixture.Words.SetLanguage(German);
        QCOMPARE(fixture.Access.txtServer->placeholderText(), FtpExamplesOf(German).Server);
        QCOMPARE(fixture.Access.txtVerzeichnis->placeholderText(), "Verzeichniss/Verzeichniss");
        fixture.Access.txtUser->setText("User-Name");
        fixture.Words.SetLanguage(French);
        QCOMPARE(fixture.Access.txtUser->text(), "User-Name");
        QCOMPARE(fixture.Access.txtUser->placeholderText(), "UNom d'utilisateur");
        fixture.Access.txtServer->setText("FTP.ihr-server.example");
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Window.lblNote->text().contains("exemple"));
        fixture.Trial.btnTrial->click();
        QCOMPARE(fixture.Trial.lblTrial->text(), QString());
    }

    void Autostart() {
        Fixture fixture;
        RecordingAutostart& entry = fixture.System.Autostart;
        fixture.Window.Open();
        fixture.Window.chkAutostart->click();
        QVERIFY(fixture.Boxes.Shown.value(0).contains("with the system start (PC)"));
        QVERIFY(entry.Line.isEmpty());
        QVERIFY(fixture.Window.Save());
        QCOMPARE(entry.Line, QStringList({QCoreApplication::applicationFilePath(), "--folder",
                                          fixture.Folder.path(), "/autostarter"}));
        fixture.Window.Open();
        QVERIFY(fixture.Window.chkAutostart->isChecked());
        fixture.Window.chkAutostart->click();
        QCOMPARE(fixture.Boxes.Shown.size(), 1);
        entry.Works = false;
        QVERIFY(fixture.Window.Save());
        QVERIFY(fixture.Boxes.Shown.value(1).contains("the autostart list"));
        entry.Works = true;
        fixture.Window.Open();
        QVERIFY(fixture.Window.Save());
        QVERIFY(entry.Line.isEmpty());
    }

    void DialUpEntries() {
        Fixture fixture;
        fixture.System.Dial.EntryList.clear();
        fixture.Window.Open();
        QCOMPARE(fixture.Window.cbConnection->currentText(), "No DFÜ detected!");
        QVERIFY(!fixture.Window.chkAnwahl->isEnabled());
        QVERIFY(fixture.Window.Save());
        QVERIFY(fixture.Lines().contains("AWName="));
        QVERIFY(fixture.Lines().contains("AWCon=0"));
    }

    void OfflinePictures() {
        Fixture fixture;
        fixture.Core->ezVidCap1.SetCameras({"a|test:64x48"});
        fixture.Window.Open();
        QCOMPARE(fixture.Offline.cbOffline->currentText(), "Offline.jpg");
        QVERIFY(fixture.Offline.Usable());
        const QTemporaryDir elsewhere;
        QImage(8, 8, QImage::Format_RGB32).save(elsewhere.filePath("Offline.jpg"));
        fixture.Offline.Add(elsewhere.filePath("Offline.jpg"));
        QCOMPARE(fixture.Offline.cbOffline->currentText(), "Offline (2).jpg");
        const QString copy = fixture.Folder.filePath("Offline/Offline (2).jpg");
        QVERIFY(!QFile::exists(copy));
        QVERIFY(fixture.Window.Save());
        QVERIFY(QFile::exists(copy));

        QDir(fixture.Folder.filePath("Offline")).removeRecursively();
        fixture.Window.Open();
        fixture.Offline.chkOfflinePic->setChecked(true);
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Boxes.Shown.value(0).endsWith(
            "does not exist!\r\nPlease you check your input!"));
        fixture.Offline.chkOfflinePic->setChecked(false);
        QVERIFY(fixture.Window.Save());
    }

    void SmallOfflinePictures_data() {
        const Rows<QSize, bool> row;
        row("the same size", {64, 48}, false);
        row("larger", {65, 48}, false);
        row("less wide", {63, 48}, true);
        row("less high", {64, 40}, true);
    }
    void SmallOfflinePictures() {
        const auto [size, warns] = Row<QSize, bool>();
        QSize camera;
        Texts words(English);
        const QTemporaryDir place;
        QDir(place.path()).mkdir("Offline");
        QImage(size, QImage::Format_RGB32).save(place.filePath("Offline/a.png"));
        SkinMaker::Write(place.filePath("a.ini"), "[Einstellungen]\nOfflinefile=a.png\n");
        Bindings bindings(words, "frmFTP");
        OfflineGroup group(
            bindings, words, [&] { return QStringList(place.path()); }, [&] { return camera; });
        bindings.ShowSettings(place.filePath("a.ini"));
        QSignalSpy warned(&group, &OfflineGroup::FoundTooSmall);
        group.chkFilter->click();
        group.chkFilter->click();
        QCOMPARE(warned.count(), 0);  // nobody knows the camera's size yet
        camera = {64, 48};
        group.chkFilter->click();
        QCOMPARE(warned.count(), warns ? 1 : 0);
        group.chkFilter->click();
        QCOMPARE(warned.count(), warns ? 1 : 0);
    }

    // What stands in the fields is tried, saved or not, and the window stays usable meanwhile.
    void TriesTheFields() {
        Fixture fixture;
        ScriptedFtpServer server(fixture.Time);
        server.Password = "right";
        fixture.Window.Open();
        fixture.Trial.btnTrial->click();
        QVERIFY(fixture.Window.lblNote->text().startsWith("Type the name of your server"));
        fixture.Access.txtServer->setText("127.0.0.1");
        fixture.Access.txtPort->setValue(server.Port());
        fixture.Access.txtPW->setText("wrong");
        fixture.Trial.btnTrial->click();
        QVERIFY(fixture.Trial.lblTrial->text().contains("(530 wrong)"));
        fixture.Words.SetLanguage(German);
        QVERIFY(fixture.Trial.lblTrial->text().contains("nimmt den Benutzernamen"));
        fixture.Access.txtPW->setText("right");
        QCOMPARE(fixture.Trial.lblTrial->text(), QString());
        fixture.Trial.btnTrial->click();
        QVERIFY(fixture.Trial.lblTrial->text().startsWith("Es klappt"));
        QVERIFY(server.Files.isEmpty());
        QCOMPARE(fixture.Lines(), QStringList());

        server.Script = {{.Verb = "PASS", .Silent = true}};
        QStringList seen;
        Timer look(fixture.Time, 1300);
        connect(&look, &Timer::Tick, this, [&] {
            seen << fixture.Trial.lblTrial->text();
            if (seen.size() == 2) fixture.Window.reject();
        });
        look.SetEnabled(true);
        fixture.Trial.btnTrial->click();
        look.SetEnabled(false);
        QCOMPARE(seen, QStringList({"Verbinden und anmelden (1 s) ...",
                                    "Verbinden und anmelden (2 s) ..."}));
        QVERIFY(fixture.Trial.btnTrial->isEnabled());
    }

    // A kept connection must not hold on to the old server.
    void ANewServerCountsAtOnce() {
        Fixture fixture;
        ScriptedFtpServer server(fixture.Time);
        fixture.Write(QString("[Einstellungen]\nServer=127.0.0.1\nPort=%1\n").arg(server.Port()));
        fixture.Core->LoadSettings();
        QVERIFY(fixture.Core->FTP1.Connect());
        fixture.Window.Open();
        fixture.Window.chkDelete->setChecked(true);
        QVERIFY(fixture.Window.Save());
        QVERIFY(fixture.Core->FTP1.IsConnected());
        fixture.Window.Open();
        fixture.Access.txtUser->setText("another");
        QVERIFY(fixture.Window.Save());
        QVERIFY(!fixture.Core->FTP1.IsConnected());
    }

    void TextsAndKeyboard() {
        Fixture fixture;
        fixture.Window.Open();
        QCOMPARE(ClippedAnywhere(fixture.Window, fixture.Words).join("\n"), QString());
        fixture.Access.optServer->setFocus();
        QCOMPARE(TabFaults(fixture.Window).join("\n"), QString());
    }

    void EveryOutcomeHasASentence() {
        Texts words(English);
        for (const auto language : {English, German, French}) {
            words.SetLanguage(language);
            QSet<QString> sentences;
            for (int i = 0; i <= static_cast<int>(TrialResult::NoScratchFile); ++i) {
                const QString text = TrialText(words, {.Server = "%2", .Folder = "f"},
                                               {static_cast<TrialResult>(i), "500 %1", "left.jpg"});
                QVERIFY2(!text.startsWith(u'?') && text.contains("left.jpg"), qPrintable(text));
                QVERIFY2(!text.contains("%3") && !text.contains("%4"), qPrintable(text));
                sentences << text;
            }
            QCOMPARE(sentences.size(), static_cast<int>(TrialResult::NoScratchFile) + 1);
        }
    }
};

QTEST_MAIN(TestFtpSettings)
#include "test_ftp_settings.moc"
