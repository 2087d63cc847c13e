#include "base/paths.h"
#include "support/data_rows.h"
#include "ui/camera_fixture.h"
#include "ui/settings/camera/path_field.h"
#include "ui/settings/folder_list.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>

namespace {

bool Read(const FolderList& list) {
    return QTest::qWaitFor([&] { return !list.Reading(); });
}

}  // namespace

class TestFrmCam : public QObject {
    Q_OBJECT

  private slots:
    void SavesItsKeysInOrder() {
        CameraFixture fixture;
        frmCam& window = fixture.Window;
        window.Open();
        CameraFixture::Pick(*window.cbDriver, 1);
        window.chkPreview->click();
        window.chkCenter->click();
        window.Text5->setText(fixture.Folder.path());
        window.asFlatCheck1->click();
        window.asFlatTextBox1->setText("/no/such/archive");
        QVERIFY(window.Save());
        const QStringList lines = fixture.Lines();
        QCOMPARE(lines,
                 QStringList({"Path=" + Paths::WithSeparator(fixture.Folder.path()),
                              "Treiber=Right", "Preview=1", "StretchPreview=0", "CenterVideo=1",
                              "Archive=1", "ArchivePath=" + Paths::Native("/no/such/archive/")}));
        QCOMPARE(fixture.Core->State.Values.WorkPath, Paths::WithSeparator(fixture.Folder.path()));
        window.Open();
        QVERIFY(window.Save());
        QCOMPARE(fixture.Lines(), lines);
    }

    void ActsAtOnceAndCloseTakesItBack() {
        CameraFixture fixture;
        fixture.OpenWith("[Einstellungen]\nTreiber=Left\nStretchPreview=1\n");
        const QStringList before = fixture.Lines();
        const Settings& values = fixture.Core->State.Values;
        frmCam& window = fixture.Window;
        CameraFixture::Pick(*window.cbDriver, 1);
        for (QCheckBox* option : {window.chkPreview, window.chkStretch, window.chkCenter})
            option->click();
        // A picture made, or a slider moved, in the meantime takes nothing of it back.
        for (const bool loaded : {false, true}) {
            if (loaded) fixture.Core->LoadSettings();
            QCOMPARE(fixture.Core->DriverIndex(), 1);
            QVERIFY(values.Preview && !values.StretchPreview && values.CenterVideo);
            QVERIFY(fixture.Core->PictureValues.PreviewLock);
        }
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
        QVERIFY(!values.Preview && values.StretchPreview && !values.CenterVideo);
        QCOMPARE(fixture.Core->DriverIndex(), 0);
        QVERIFY(!fixture.Core->PictureValues.PreviewLock);
        QCOMPARE(fixture.Lines(), before);
    }

    void FollowsTheListOfTheMainWindow() {
        CameraFixture fixture;
        const QComboBox& list = *fixture.Window.cbDriver;
        fixture.Window.Open();
        fixture.Core->SelectDriver(1);
        QCOMPARE(list.currentText(), "Right");
        fixture.System.Cameras.Devices << CaptureDevice{"New", "usb", "none", "New"};
        fixture.Window.cbDriver->showPopup();
        QCOMPARE(list.itemText(2), "New");
        fixture.Window.cbDriver->hidePopup();
    }

    void CameraOfTheSettingsStaysWithoutIt_data() {
        const Rows<bool, QString> row;
        row("no camera at all", false, "No Video Capture Device!");
        row("only others", true, "");
    }
    void CameraOfTheSettingsStaysWithoutIt() {
        const auto [others, shown] = Row<bool, QString>();
        CameraFixture fixture;
        if (!others) fixture.System.Cameras.Devices.clear();
        fixture.Write("[Einstellungen]\nTreiber=Gone\n");
        fixture.Core->LoadSettings();
        frmCam& window = fixture.Window;
        window.Open();
        QCOMPARE(window.cbDriver->currentText(), shown);
        QVERIFY(window.cbDriver->placeholderText().startsWith("Gone"));
        QVERIFY(!window.btnFormat->isEnabled());
        QVERIFY(window.Save());
        QVERIFY(fixture.Lines().contains("Treiber=Gone"));
    }

    void FolderOfThePictures_data() {
        const Rows<QString, bool, QString> row;
        row("there", "%1", true, "%1/");
        row("with the separator of the other system", "%1\\", true, "%1/");
        row("below the program folder", "mine", true, "mine/");
        row("nothing", " ", true, "");
        row("missing", "%1/missing", false, "");
        row("a file", "%1/ftpOptions.ini", false, "");
    }
    void FolderOfThePictures() {
        const auto [typed, good, written] = Row<QString, bool, QString>();
        CameraFixture fixture;
        const QString at = fixture.Folder.path();
        const auto in = [&at](const QString& text) { return QString(text).replace("%1", at); };
        frmCam& window = fixture.Window;
        window.Open();
        window.Text5->setText(in("%1/former"));
        fixture.Tables.ApplyGermanTexts();
        window.Text5->setText(in(typed));
        QCOMPARE(window.Save(), good);
        QCOMPARE(window.isVisible(), !good);
        if (good) {
            QVERIFY(fixture.Lines().contains("Path=" + Paths::Native(in(written))));
            QVERIFY(QFileInfo(fixture.Core->State.Values.WorkPath).isDir());
            return;
        }
        QVERIFY(fixture.Lines().isEmpty());
        QCOMPARE(window.focusWidget(), window.Text5);
        QVERIFY(window.lblNote->text().contains(in(typed)));
        // The message names what the field held when the language was chosen.
        QCOMPARE(fixture.Boxes.Icons, QList{MessageBoxes::Icon::Critical});
        QCOMPARE(fixture.Boxes.Shown.first(),
                 in("Stillpost: Das Verzeichnis %1/former existiert nicht!\r\nBitte überprüfen Sie "
                    "Ihre Eingabe!"));
    }

    void MissingArchiveIsToldWhereItIsTyped() {
        CameraFixture fixture;
        frmCam& window = fixture.Window;
        window.Open();
        window.asFlatTextBox1->setText("/no/such/archive");
        window.asFlatCheck1->click();
        QTRY_VERIFY(!window.lblArchiveNote->text().isEmpty());
        window.asFlatTextBox1->setText(fixture.Folder.path());
        emit window.asFlatTextBox1->editingFinished();
        QTRY_VERIFY(window.lblArchiveNote->text().isEmpty());
    }

    // Left by its archive side, the chooser goes on serving it.
    void ChooserServesTheFieldOfItsMode() {
        CameraFixture fixture;
        const QString pictures = fixture.Folder.path();
        const QString archive = fixture.Folder.filePath("archive");
        QDir(archive).mkpath("old");
        fixture.OpenWith("[Einstellungen]\nPath=" + pictures + "\nArchivePath=" + archive + "\n");
        frmCam& window = fixture.Window;
        frmPfad& chooser = window.Chooser;
        QTest::mouseClick(window.asFlatTextBox1, Qt::LeftButton);
        QVERIFY(chooser.isVisible() && Read(*chooser.Dir1));
        QCOMPARE(chooser.Dir1->Path(), archive);
        chooser.btnCancel->click();
        QVERIFY(!chooser.isVisible());
        QTest::mouseClick(window.Text5, Qt::LeftButton);
        QVERIFY(Read(*chooser.Dir1));
        chooser.Dir1->setCurrentRow(1);
        chooser.btnSave->click();
        QCOMPARE(window.asFlatTextBox1->text(), Paths::Native(archive + "/old"));
        QCOMPARE(window.Text5->text(), Paths::Native(pictures));
        // Now it serves the other one, opened from the keyboard.
        QTest::keyClick(window.Text5, Qt::Key_F4);
        QVERIFY(chooser.isVisible() && Read(*chooser.Dir1));
        QCOMPARE(chooser.Dir1->Path(), pictures);
        chooser.txtFolder->setText("archive");
        chooser.btnSave->click();
        QTRY_VERIFY(!chooser.isVisible());
        QCOMPARE(window.Text5->text(), Paths::Native(archive));
        window.reject();
        QCOMPARE(fixture.Lines().size(), 2);
    }

    void ChooserFindsItsWay() {
        SettingsFixture fixture;
        QDir(fixture.Folder.path()).mkpath("a/b");
        const auto in = [&](const QString& name) { return fixture.Folder.filePath(name); };
        frmPfad chooser(fixture.Words, nullptr);
        FolderList& list = *chooser.Dir1;
        chooser.Open(in("a/b/gone/deeper"));
        QVERIFY(Read(list));
        QCOMPARE(list.Path(), in("a/b"));
        QTest::keyClick(&list, Qt::Key_Backspace);
        QVERIFY(Read(list));
        list.setCurrentRow(1);
        QCOMPARE(chooser.txtFolder->text(), Paths::Native(in("a/b")));
        list.setCurrentRow(0);
        QTest::keyClick(&list, Qt::Key_Return);
        QVERIFY(Read(list) && chooser.isVisible());
        QCOMPARE(list.Path(), fixture.Folder.path());

        chooser.txtFolder->setFocus();
        chooser.txtFolder->setText(Paths::Native(in("a/no")));
        QTest::keyClick(chooser.txtFolder, Qt::Key_Return);
        QVERIFY(Read(list) && chooser.isVisible());
        QVERIFY(chooser.lblNote->text().contains(Paths::Native(in("a/no"))));
        QCOMPARE(list.Path(), fixture.Folder.path());

        for (const QString& name : QStringList{"new", "no/such/place"}) {
            chooser.btnNew->click();
            auto* question = chooser.findChild<QInputDialog*>();
            question->setTextValue(name);
            question->accept();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(Read(list));
            QCOMPARE(list.Path(), in("new"));
        }
        QVERIFY(chooser.lblNote->text().contains(Paths::Native(in("new"))));
    }

    void PlacesBelongToTheirFolders_data() {
        Rows<QString, int>({{"/home/me", 0},
                            {"/home/me/pictures", 0},
                            {"/home/mend", 1},
                            {"/media/me/stick/x", 2},
                            {"/", 1}});
    }
    void PlacesBelongToTheirFolders() {
        const auto [folder, place] = Row<QString, int>();
        using enum Place::Kind;
        QCOMPARE(PlaceOf({{Home, {}, "/home/me"}, {Whole, {}, "/"}, {Drive, {}, "/media/me/stick"}},
                         folder),
                 place);
    }

    void EveryTextIsThereAndWhole() {
        CameraFixture fixture;
        frmCam& window = fixture.Window;
        frmPfad& chooser = window.Chooser;
        window.Open();
        QCOMPARE(ClippedAnywhere(window, fixture.Words).join("\n"), QString());
        QCOMPARE(window.Text5->btnBrowse->text(), "…");
        // The buttons are a column of their own.
        QCOMPARE(TabFaults(window).join("\n"), "back to Source...");
        chooser.Open(fixture.Folder.path());
        QVERIFY(Read(*chooser.Dir1));
        QCOMPARE(ClippedAnywhere(chooser, fixture.Words, [&] { chooser.Open({}); }), QStringList());
        QCOMPARE(TabFaults(chooser).join("\n"), QString());
    }
};

QTEST_MAIN(TestFrmCam)
#include "test_frm_cam.moc"
