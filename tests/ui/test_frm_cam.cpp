#include "base/paths.h"
#include "support/data_rows.h"
#include "ui/camera_fixture.h"
#include "ui/settings/camera/folder_list.h"
#include "ui/settings/camera/path_field.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>

namespace {

// Picks an entry as a user does.
void Pick(QComboBox& list, int index) {
    list.setCurrentIndex(index);
    emit list.activated(index);
    QCoreApplication::processEvents();
}

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
        Pick(*window.cbDriver, 1);
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
        fixture.Write("[Einstellungen]\nTreiber=Left\nStretchPreview=1\n");
        fixture.Core->RefreshDrivers();
        fixture.Core->LoadSettings();
        const QStringList before = fixture.Lines();
        const Settings& values = fixture.Core->State.Values;
        frmCam& window = fixture.Window;
        window.Open();
        Pick(*window.cbDriver, 1);
        QCOMPARE(fixture.Window.cbDriver->currentText(), "Right");
        QCOMPARE(fixture.Window.cbDriver->count(), 2);
        QCOMPARE(fixture.Core->DriverIndex(), 1);
        for (QCheckBox* option : {window.chkPreview, window.chkStretch, window.chkCenter})
            option->click();
        QVERIFY(values.Preview && !values.StretchPreview && values.CenterVideo);
        // A picture made, or a slider moved, in the meantime takes nothing of it back.
        QVERIFY(fixture.Core->PictureValues.PreviewLock);
        fixture.Core->LoadSettings();
        QCOMPARE(fixture.Core->DriverIndex(), 1);
        QVERIFY(values.Preview && !values.StretchPreview && values.CenterVideo);
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
        QVERIFY(!values.Preview && values.StretchPreview && !values.CenterVideo);
        QCOMPARE(fixture.Core->DriverIndex(), 0);
        QVERIFY(!fixture.Core->PictureValues.PreviewLock);
        QCOMPARE(fixture.Lines(), before);
    }

    void FollowsTheListOfTheMainWindow() {
        CameraFixture fixture;
        frmCam& window = fixture.Window;
        window.Open();
        fixture.Core->SelectDriver(1);
        QCOMPARE(window.cbDriver->currentText(), "Right");
        Pick(*window.cbDriver, 0);
        QCOMPARE(fixture.Window.cbDriver->currentIndex(), 0);
        fixture.System.Cameras.Devices << CaptureDevice{"New", "usb", "none", "New"};
        window.cbDriver->showPopup();
        QCOMPARE(window.cbDriver->itemText(2), "New");
        window.cbDriver->hidePopup();
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

    void CarelessFileOpensAndSavesValidValues() {
        CameraFixture fixture;
        fixture.Write(
            "[Einstellungen]\nTreiber=12\nPreview=yes\nStretchPreview=-3\nCenterVideo=2x\n"
            "Archive=often\nPath=work\\\n");
        fixture.Core->LoadSettings();
        fixture.Window.Open();
        QVERIFY(fixture.Window.Save());
        QCOMPARE(fixture.Lines(),
                 QStringList({"Treiber=12", "Preview=0", "StretchPreview=1", "CenterVideo=1",
                              "Archive=0", Paths::Native("Path=work/"), "ArchivePath="}));
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
        QDir(fixture.Folder.path()).mkpath("archive/old");
        fixture.Write("[Einstellungen]\nPath=" + fixture.Folder.path() +
                      "\nArchivePath=" + fixture.Folder.filePath("archive") + "\n");
        fixture.Core->LoadSettings();
        frmCam& window = fixture.Window;
        frmPfad& chooser = window.Chooser;
        window.Open();
        QTest::mouseClick(window.asFlatTextBox1, Qt::LeftButton);
        QVERIFY(chooser.isVisible() && Read(*chooser.Dir1));
        QCOMPARE(chooser.Dir1->Path(), fixture.Folder.filePath("archive"));
        chooser.btnCancel->click();
        QVERIFY(!chooser.isVisible());
        QTest::mouseClick(window.Text5, Qt::LeftButton);
        QVERIFY(Read(*chooser.Dir1));
        chooser.Dir1->setCurrentRow(1);
        chooser.btnSave->click();
        QVERIFY(!chooser.isVisible());
        QCOMPARE(window.asFlatTextBox1->text(),
                 Paths::Native(fixture.Folder.filePath("archive/old")));
        QCOMPARE(window.Text5->text(), Paths::Native(fixture.Folder.path()));
        // Now it serves the other one, opened from the keyboard.
        QTest::keyClick(window.Text5, Qt::Key_F4);
        QVERIFY(chooser.isVisible() && Read(*chooser.Dir1));
        QCOMPARE(chooser.Dir1->Path(), fixture.Folder.path());
        chooser.txtFolder->setText("archive");
        chooser.btnSave->click();
        QTRY_VERIFY(!chooser.isVisible());
        QCOMPARE(window.Text5->text(), Paths::Native(fixture.Folder.filePath("archive")));
        window.reject();
        QCOMPARE(fixture.Lines().size(), 2);
    }

    void ChooserFindsItsWay() {
        CameraFixture fixture;
        QDir(fixture.Folder.path()).mkpath("a/b");
        fixture.Write("[Einstellungen]\nPath=" + fixture.Folder.filePath("a/b/gone/deeper") + "\n");
        fixture.Core->LoadSettings();
        frmPfad& chooser = fixture.Window.Chooser;
        FolderList& list = *chooser.Dir1;
        chooser.Open();
        QVERIFY(Read(list));
        QCOMPARE(list.Path(), fixture.Folder.filePath("a/b"));
        QTest::keyClick(&list, Qt::Key_Backspace);
        QVERIFY(Read(list));
        list.setCurrentRow(1);
        QCOMPARE(chooser.txtFolder->text(), Paths::Native(fixture.Folder.filePath("a/b")));
        list.setCurrentRow(0);
        QTest::keyClick(&list, Qt::Key_Return);
        QVERIFY(Read(list) && chooser.isVisible());
        QCOMPARE(list.Path(), fixture.Folder.path());

        chooser.txtFolder->setText(fixture.File());
        QTest::keyClick(chooser.txtFolder, Qt::Key_Return);
        QVERIFY(Read(list) && chooser.isVisible());
        QVERIFY(chooser.lblNote->text().contains(Paths::Native(fixture.File())));
        QCOMPARE(list.Path(), fixture.Folder.path());

        for (const QString& name : QStringList{"new", "no/such/place"}) {
            chooser.btnNew->click();
            auto* question = chooser.findChild<QInputDialog*>();
            question->setTextValue(name);
            question->accept();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(Read(list));
            QCOMPARE(list.Path(), fixture.Folder.filePath("new"));
        }
        QVERIFY(chooser.lblNote->text().contains(Paths::Native(fixture.Folder.filePath("new"))));
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
        window.Open();
        QCOMPARE(fixture.Missing(
                     window, "frmCam",
                     {"ArchivePath", "ArchiveOption", "Title", "Save", "Close", "FrameDriver"}),
                 QStringList());
        window.Chooser.Open();
        QCOMPARE(fixture.Missing(window.Chooser, "frmPfad",
                                 {"Title", "FramePath", "SearchIn", "Save", "Cancel"}),
                 QStringList());
        QVERIFY(Read(*window.Chooser.Dir1));
        QCOMPARE(ClippedAnywhere(window.Chooser, fixture.Words, [&] { window.Chooser.Open(); }),
                 QStringList());
        QCOMPARE(CameraFixture::Nameless(window.Chooser), QStringList());
        QCOMPARE(ClippedAnywhere(window, fixture.Words).join("\n"), QString());
        QCOMPARE(CameraFixture::Nameless(window), QStringList());
        QCOMPARE(CameraFixture::TabChain(window, window.cbDriver),
                 QList<QWidget*>(
                     {window.cbDriver, window.chkPreview, window.chkStretch, window.chkCenter,
                      window.btnSource, window.btnFormat, window.btnPicture, window.Text5,
                      window.Text5->btnBrowse, window.asFlatCheck1, window.asFlatTextBox1,
                      window.asFlatTextBox1->btnBrowse, window.btnSave, window.btnClose}));
    }
};

QTEST_MAIN(TestFrmCam)
#include "test_frm_cam.moc"
