#include "base/paths.h"
#include "net/publishing/trial_texts.h"
#include "ui/settings/folder_list.h"
#include "ui/settings/frm_pfad.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/ftp/frm_page.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/settings/ftp/offline_group.h"
#include "ui/settings/ftp/trial_panel.h"
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
#include <QTest>

using enum Texts::Language;

namespace {

// The FTP settings of a program with two offline pictures and two dial-up entries.
class Fixture : public SettingsFixture {
  public:
    Fixture() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, Folder.path());
        System.Dial.EntryList = {"Home", "Work"};
        AddPicture("Closed.png");
        AddPicture("Offline.jpg");
        Write("");
    }

    void AddPicture(const QString& name) const {
        QDir().mkpath(Folder.filePath("Offline"));
        QImage picture(32, 24, QImage::Format_RGB32);
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
            "Port=2121\nDelete=1\nAnwahl=1\nAbwahl=1\nAWName=gone\nAWCon=2\nAutostart=1\n"
            "lastpictures=1\nlastpictureanz=7\nOfflinePic=1\nUseOfflineFilter=1\nOfflinefilter=0\n"
            "Offlinefile=Closed.png\nJPGQuality=55\nQuali=1\n";
        fixture.Write(saved);
        const QStringList before = fixture.Lines();
        fixture.Window.Open();
        QCOMPARE(fixture.Access.txtPW->text(), " p$@:!ü; ");
        QCOMPARE(fixture.Window.cbQuality->currentText(), "55 %");
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

    void LocalModeNeedsAFolder() {
        Fixture fixture;
        fixture.Window.Open();
        fixture.Access.txtVerzeichnis->setText("on/the/server");
        fixture.Access.optLocal->click();
        QCOMPARE(fixture.Access.txtVerzeichnis->text(), QString());
        fixture.Access.txtVerzeichnis->setText("/no/such/folder");
        QVERIFY(!fixture.Window.Save());
        QCOMPARE(fixture.Boxes.Shown,
                 QStringList("Stillpost: The directory " + Paths::Native("/no/such/folder/") +
                             " does not exist!\r\nPlease you check your input!"));
        QCOMPARE(fixture.Lines(), QStringList());
        fixture.Access.btnFolder->click();
        auto* chooser = fixture.Access.findChild<frmPfad*>();
        QTRY_VERIFY(!chooser->Dir1->Reading());
        chooser->txtFolder->setText(fixture.Folder.path());
        chooser->btnSave->click();
        const QString folder = Paths::WithSeparator(fixture.Folder.path());
        QTRY_COMPARE(fixture.Access.txtVerzeichnis->text(), folder);
        QVERIFY(fixture.Window.Save());
        QCOMPARE(fixture.Lines().mid(1, 2), QStringList({"Server=Local", "Verzeichnis=" + folder}));
        fixture.Window.Open();
        QVERIFY(fixture.Access.optLocal->isChecked());
        fixture.Access.optServer->click();
        QCOMPARE(fixture.Access.txtVerzeichnis->text(), QString());
    }

    // Whoever types another server gets as far as the word for the local mode.
    void LocalhostIsAServer() {
        Fixture fixture;
        fixture.Window.Open();
        QTest::keyClicks(fixture.Access.txtServer, "localhost");
        QVERIFY(!fixture.Access.Local());
        QCOMPARE(fixture.Access.Server(), "localhost");
    }

    void TakesAPastedAddressApart() {
        Fixture fixture;
        fixture.Write("[Einstellungen]\nServer=ftp://me@a.org/web/\nUser=own\n");
        fixture.Window.Open();
        const auto fields = [&] {
            const FtpAccessGroup& access = fixture.Access;
            return QStringList{access.txtServer->text(), access.txtUser->text(),
                               access.txtPW->text(), access.Folder(), access.txtPort->text()}
                .join(u' ');
        };
        QCOMPARE(fields(), "a.org own  web 21");
        fixture.Access.txtServer->setText(" ftp://you:pw@[::1]:2121/ ");
        QVERIFY(fixture.Window.Save());
        QCOMPARE(fields(), "::1 you pw web 2121");
        QVERIFY(fixture.Lines().contains("Server=::1"));
        fixture.Window.Open();
        fixture.Access.txtServer->setText("gopher://a.org");
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Window.lblNote->text().contains("gopher://a.org"));
        // An address says the way, too, and with it the port.
        fixture.Access.txtServer->setText("sftp://a.org");
        fixture.Access.txtPort->setValue(21);
        QVERIFY(fixture.Window.Save());
        QVERIFY(fixture.Lines().contains("Protocol=sftp") && fixture.Lines().contains("Port=22"));
        const auto hidden = [](const QWidget* each) { return each->isHidden(); };
        QVERIFY(!hidden(fixture.Access.Way->txtKeyFile));
        fixture.Access.Way->Choose("s3");
        QVERIFY(hidden(fixture.Access.Way->btnKeyFile) && !hidden(fixture.Access.optServer));
        QVERIFY(hidden(fixture.Window.txtFileMode));
    }

    void ExamplesAreNeverUsed() {
        Fixture fixture;
        fixture.Write("[Einstellungen]\nServer=ftp.ihr-server.example\n");
        fixture.Window.Open();
        QCOMPARE(fixture.Access.txtServer->text(), QString());
        fixture.Access.txtServer->setText("FTP.ihr-server.example");
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Window.lblNote->text().contains("example"));
    }

    void RightsAreDigitsOrLeftAlone() {
        Fixture fixture;
        fixture.Window.Open();
        auto* mode = fixture.Window.findChild<QLineEdit*>("FileMode");
        QCOMPARE(mode->text(), "644");
        mode->setText("rw");
        QVERIFY(!fixture.Window.Save() && fixture.Window.lblNote->text().contains("644"));
        mode->clear();
        QVERIFY(fixture.Window.Save());
        fixture.Window.Open();
        QCOMPARE(mode->text(), QString());
    }

    void Autostart() {
        Fixture fixture;
        RecordingAutostart& entry = fixture.System.Autostart;
        fixture.Window.Open();
        fixture.Window.chkAutostart->click();
        QVERIFY(entry.Line.isEmpty());
        QVERIFY(fixture.Window.Save());
        QCOMPARE(entry.Line, QStringList({QCoreApplication::applicationFilePath(), "--folder",
                                          fixture.Folder.path(), "/autostarter"}));
        fixture.Window.Open();
        fixture.Window.chkAutostart->click();
        entry.Works = false;
        QVERIFY(fixture.Window.Save());
        QVERIFY(fixture.Boxes.Shown.value(1).contains("the autostart list"));
        entry.Works = true;
        fixture.Window.Open();
        QVERIFY(fixture.Window.Save());
        QVERIFY(entry.Line.isEmpty());
    }

    void OfflinePictures() {
        Fixture fixture;
        fixture.Window.Open();
        QCOMPARE(fixture.Offline.cbOffline->currentText(), "Offline.jpg");
        const QTemporaryDir elsewhere;
        QImage(8, 8, QImage::Format_RGB32).save(elsewhere.filePath("Offline.jpg"));
        QVERIFY(Drop(fixture.Offline, {QUrl::fromLocalFile(elsewhere.filePath("Offline.jpg"))}));
        QCOMPARE(fixture.Offline.cbOffline->currentText(), "Offline (2).jpg");
        const QString copy = fixture.Folder.filePath("Offline/Offline (2).jpg");
        QVERIFY(!QFile::exists(copy));
        QVERIFY(fixture.Window.Save());
        QVERIFY(QFile::exists(copy));

        QDir(fixture.Folder.filePath("Offline")).removeRecursively();
        fixture.Window.Open();
        fixture.Offline.chkOfflinePic->setChecked(true);
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Boxes.Shown.value(0).contains("does not exist!"));
    }

    // What stands in the fields is tried, saved or not, and the window stays usable meanwhile.
    void TriesTheFields() {
        Fixture fixture;
        ScriptedFtpServer server(fixture.Time);
        server.Password = "right";
        fixture.Window.Open();
        fixture.Access.txtServer->setText("127.0.0.1");
        fixture.Access.txtPort->setValue(server.Port());
        fixture.Access.txtPW->setText("wrong");
        fixture.Trial.btnTrial->click();
        QVERIFY(fixture.Trial.lblTrial->text().contains("(530 wrong)"));
        QCOMPARE(fixture.Access.txtUser->actions().size(), 1);  // marked
        fixture.Access.txtPW->setText("right");
        QCOMPARE(fixture.Trial.lblTrial->text(), QString());
        QVERIFY(fixture.Access.txtUser->actions().isEmpty());
        fixture.Trial.btnTrial->click();
        QVERIFY(fixture.Trial.lblTrial->text().startsWith("It works"));
        QCOMPARE(fixture.Lines(), QStringList());

        server.Script = {{.Verb = "PASS", .Silent = true}};
        QString seen;
        Timer look(fixture.Time, 2600);
        connect(&look, &Timer::Tick, this, [&] {
            seen = fixture.Trial.lblTrial->text();
            fixture.Window.reject();
        });
        look.SetEnabled(true);
        fixture.Trial.btnTrial->click();
        look.SetEnabled(false);
        QVERIFY2(seen.contains("(2 s)"), qPrintable(seen));
        QVERIFY(fixture.Trial.btnTrial->isEnabled());
    }

    // With what stands in the fields of both windows.
    void PutsAWebPage() {
        Fixture fixture;
        ScriptedFtpServer server(fixture.Time);
        server.Folders = {"cam"};
        server.Files["cam/my.html"] = "mine";
        frmPage& page = *fixture.Window.Page;
        fixture.Window.Open();
        fixture.Access.txtVerzeichnis->setText("cam");
        fixture.Window.chkHistory->setChecked(true);
        fixture.Window.txtHistory->setValue(2);
        fixture.Window.btnPage->click();
        page.txtTitle->setText("The yard");
        page.txtFile->setText("pw.jpg");
        page.btnPut->click();
        QVERIFY(page.lblNote->text().contains("index.html"));
        page.txtFile->setText("my.html");
        page.btnPut->click();
        QVERIFY(!page.isVisible());  // there is no server yet
        fixture.Access.txtServer->setText("127.0.0.1");
        fixture.Access.txtPort->setValue(server.Port());
        page.Open();
        page.txtTitle->setText("The yard");
        page.txtFile->setText("my.html");
        page.btnPut->click();
        QCOMPARE(page.lblState->text(), fixture.Words.Get("frmPage", "NoPage"));
        QDir(fixture.Folder.path()).mkdir("web");
        SkinMaker::Write(fixture.Folder.filePath("web/index.html"),
                         "<html data-name=\"\" data-history=\"0\">");
        page.btnPut->click();
        QVERIFY(fixture.Boxes.Shown.value(0).contains("already a file my.html"));
        QCOMPARE(page.lblState->text(), fixture.Words.Get("frmPage", "Stopped"));
        QCOMPARE(server.Files["cam/my.html"], "mine");
        fixture.Boxes.Yes = true;
        page.btnPut->click();
        QVERIFY(page.lblState->text().endsWith(" http://127.0.0.1/cam/my.html"));
        QCOMPARE(server.Files["cam/my.html"], "<html data-name=\"The yard\" data-history=\"2\">");
        QCOMPARE(fixture.Lines(), QStringList({"PageTitle=The yard", "PageFile=my.html"}));
        QCOMPARE(ClippedAnywhere(page, fixture.Words).join("\n"), QString());
        page.txtTitle->setFocus();
        QCOMPARE(TabFaults(page).join("\n"), QString());
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

    void AnOpenWindowKeepsWhatWasTyped() {
        Fixture fixture;
        fixture.Window.Open();
        fixture.Access.txtPort->setValue(2121);
        fixture.Window.Open();
        QCOMPARE(fixture.Access.txtPort->value(), 2121);
        fixture.Window.reject();
        fixture.Window.Open();
        QCOMPARE(fixture.Access.txtPort->value(), 21);
    }

    void AFileThatCannotBeWrittenKeepsTheWindow() {
        Fixture fixture;
        fixture.Window.Open();
        fixture.Access.txtUser->setText(QString("a") + QChar(0) + "b");  // no file can hold it
        QVERIFY(!fixture.Window.Save());
        QVERIFY(fixture.Window.isVisible());
        QCOMPARE(fixture.Lines(), QStringList());
        QCOMPARE(fixture.Boxes.Shown.size(), 1);
    }

    void TextsAndKeyboard() {
        Fixture fixture;
        fixture.Window.Open();
        QCOMPARE(ClippedAnywhere(fixture.Window, fixture.Words).join("\n"), QString());
        fixture.Access.optServer->setFocus();
        QCOMPARE(TabFaults(fixture.Window).join("\n"), QString());
    }

    void EveryOutcomeHasASentence() {
        const Texts words(English);
        QSet<QString> sentences;
        for (int i = 0; i <= static_cast<int>(ServerFault::SignatureRefused); ++i) {
            const QString text = TrialText(words, {.Server = "a", .Folder = "f"},
                                           {{static_cast<ServerFault>(i), "500"}, "left.jpg"});
            QVERIFY2(!text.startsWith(u'?') && !sentences.contains(text), qPrintable(text));
            sentences << text;
        }
    }
};

QTEST_MAIN(TestFtpSettings)
#include "test_ftp_settings.moc"
