#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/font_chooser.h"
#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/overlay/picture_list.h"
#include "ui/settings_fixture.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

using enum Texts::Language;

namespace {

// The three windows of the overlays over a settings file that says no more than the size of the
// camera's pictures, 320 x 240; there is no camera.
class OverlayBench : public SettingsFixture {
  public:
    static inline const QString Empty = "[Einstellungen]\nCaptureFormat=320x240\n";

    explicit OverlayBench(const QString& settings = Empty) {
        QDir(Folder.path()).mkdir("overlay");
        Write(settings);
        Core->LoadSettings();
    }

    frmText Lines8{Around(), nullptr};
    frmBild Pictures{Around(), nullptr};
    frmOverlay Window{Around(), Lines8, Pictures, nullptr};

    // A picture in a folder of the program folder; its upper left pixel is white, the rest is not.
    QString MakePicture(const QString& name, const QColor& colour, QSize size = {40, 30}) const {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(colour);
        picture.setPixelColor(0, 0, Qt::white);
        const QString path = Folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        picture.save(path);
        return path;
    }

    // What is seen after that time.
    [[nodiscard]] QImage Seen(const OverlayPreview& preview, int milliseconds = 60) {
        Time.Advance(milliseconds);
        return preview.Picture();
    }

    // The lines of the file after the window was saved over an empty one.
    [[nodiscard]] QStringList Saved(SettingsWindow& window) {
        Write("");
        return window.Save() ? Lines() : QStringList("not saved");
    }
};

// The window over a list of that many pictures 0.png, 1.png …, all of them read.
class ListBench : public OverlayBench {
  public:
    explicit ListBench(int count, const QString& more = {}) {
        QString settings = Empty + "Overlay=4\n[Picture]\n" + more;
        for (int i = 0; i < count; ++i) {
            MakePicture(QString("overlay/%1.png").arg(i), QColor::fromHsv(i * 7, 255, 255));
            settings += QString("%1Pic=%1.png\n").arg(i);
        }
        Write(settings);
        Core->LoadSettings();
        Pictures.Open();
        Time.Advance(0);
    }
};

[[nodiscard]] bool IsRed(const QColor& colour) {
    return colour.red() > 180 && colour.green() < 70 && colour.blue() < 70;
}

}  // namespace

class TestOverlayWindows : public QObject {
    Q_OBJECT

  private slots:
    // What was saved is shown again and saved the same; numbers and words that make no sense, and
    // files that are gone, become what is valid.
    void SettingsAreShownAndSaved_data() {
        const Rows<QString, QString> row;
        row("another choice everywhere",
            "Date=4;Time=3;Overlay=3;Position=6;PositionX=7;PositionY=-8;PositionBild=5;"
            "Font=DejaVu Sans Mono;Size=24;Color=255;BackColor=65280;Transparent=1;Bold=1;Italic=1;"
            "Underline=1;Overlayfile=sun.png;OverKombi=1;PictureEff=true",
            "Date=4;Time=3;Overlay=3;Text=special Text;Position=6;PositionX=7;PositionY=-8;"
            "PositionBild=5;Font=DejaVu Sans Mono;Size=24;Color=255;BackColor=65280;Transparent=1;"
            "Bold=1;Italic=1;Underline=1;Overlayfile=sun.png;OverKombi=1;PictureEff=true");
        row("no sense", "Date=5;Time=now;Overlay=6;Color=16777216;BackColor=blue;Overlayfile=gone",
            "Date=0;Time=0;Overlay=5;Text=;BackColor=0;PictureEff=false;Overlayfile=gone");
    }

    void SettingsAreShownAndSaved() {
        auto [before, after] = Row<QString, QString>();
        OverlayBench bench("[Einstellungen]\n" + before.replace(u';', u'\n') + "\n");
        bench.Window.Open();
        const QStringList saved = bench.Saved(bench.Window);
        for (const QString& line : after.split(u';'))
            QVERIFY2(saved.contains(line), qPrintable(line + " in " + saved.join(u';')));
        bench.Window.Open();
        QVERIFY(bench.Window.Save());
        QCOMPARE(bench.Lines(), saved);
    }

    // What is typed shows in the preview at once.
    void TextKeysInOrder() {
        OverlayBench bench;
        bench.Lines8.Open();
        const QImage before = bench.Seen(*bench.Lines8.Preview);
        bench.Lines8.Lin[1]->setText(" \"Hello\" ");
        QVERIFY(bench.Seen(*bench.Lines8.Preview) != before);
        bench.Lines8.Lin[0]->setText("Date, Time at");
        QVERIFY(bench.Lines8.Preview->Note().contains("is left out"));
        bench.Lines8.Lin[0]->clear();
        QCOMPARE(bench.Lines8.Preview->Note(), QString());
        bench.Lines8.optRows->setChecked(true);
        bench.Lines8.Pic->setValue(12);
        QCOMPARE(bench.Saved(bench.Lines8),
                 QStringList({"Effect=Zeile", "Pic=12", "UB=0", "Lin0=", "Lin1=\" \"Hello\" \"",
                              "Lin2=", "Lin3=", "Lin4=", "Lin5=", "Lin6=", "Lin7=", "TextFile=",
                              "TextFileAge=0", "Overlay=3"}));
        bench.Lines8.Open();
        QCOMPARE(bench.Lines8.Lin[1]->text(), QString(" \"Hello\" "));
        QVERIFY(bench.Lines8.optRows->isChecked() && bench.Lines8.chkDateFirst->isChecked());
    }

    void TextsAndKeyboard() {
        ListBench bench(3);
        QCOMPARE(ClippedAnywhere(bench.Pictures, bench.Words).join("\n"), QString());
        bench.Pictures.List->setCurrentRow(1);
        bench.Pictures.List->setFocus();
        QCOMPARE(TabFaults(bench.Pictures).join("\n"), QString());
        QCOMPARE(ClippedAnywhere(bench.Lines8, bench.Words).join("\n"), QString());
        bench.Lines8.optRows->setChecked(true);
        bench.Lines8.Lin[0]->setFocus();
        QCOMPARE(TabFaults(bench.Lines8).join("\n"), QString());
        QCOMPARE(ClippedAnywhere(bench.Window, bench.Words).join("\n"), QString());
        bench.Window.chkKombi->setChecked(true);
        QCOMPARE(TabFaults(bench.Window).join("\n"), QString());
    }

    // The preview is what would be published: changes show in it at once, and nothing is written.
    void ThePreviewIsWhatWillBeSent() {
        OverlayBench bench;
        bench.MakePicture("overlay/sun.png", Qt::red);
        frmOverlay& window = bench.Window;
        window.Open();
        QCOMPARE(bench.Seen(*window.Preview).size(), QSize(320, 240));
        window.lstEffect->SetPlace(4);
        window.cbPicture->setCurrentIndex(window.cbPicture->findText("sun.png"));
        emit window.cbPicture->activated(1);
        for (const auto& [place, at] :
             {std::pair(4, QPoint(20, 225)), std::pair(0, QPoint(300, 15))}) {
            window.lstPositionBild->SetPlace(place);
            QVERIFY(IsRed(bench.Seen(*window.Preview).pixelColor(at)));
        }
        window.lstEffect->SetPlace(0);
        window.chkKombi->setChecked(true);
        window.lstPosition->SetPlace(6);
        window.btnBackColor->SetColour(Qt::red);
        const QImage both = bench.Seen(*window.Preview);
        QVERIFY(IsRed(both.pixelColor(300, 15)));
        // The ground behind the date, at the lower edge of its line.
        QVERIFY(IsRed(both.pixelColor(160, 126)) || IsRed(both.pixelColor(160, 114)));
        window.chkTransparent->setChecked(true);
        QVERIFY(!IsRed(bench.Seen(*window.Preview).pixelColor(160, 126)));
        QCOMPARE(QDir(bench.Core->State.Values.WorkPath).entryList(QDir::Files), QStringList());
        QCOMPARE(bench.Lines(), QStringList("CaptureFormat=320x240"));
    }

    // Every colour and font pointed at shows; cancelling brings back what was there.
    void ChoosersAreLiveAndCanBeCancelled() {
        OverlayBench bench;
        bench.Window.Open();
        bench.Window.btnBackColor->click();
        auto* colours = bench.Window.findChild<QColorDialog*>();
        colours->setCurrentColor(Qt::red);
        QCOMPARE(bench.Window.btnBackColor->Colour(), QColor(Qt::red));
        colours->reject();
        QCOMPARE(bench.Window.btnBackColor->Colour(), QColor(Qt::black));

        bench.Window.Font->btnFont->click();
        auto* fonts = bench.Window.findChild<QFontDialog*>();
        QFont font = fonts->currentFont();
        font.setUnderline(true);
        font.setPointSize(36);
        fonts->setCurrentFont(font);
        fonts->accept();
        const QStringList saved = bench.Saved(bench.Window);
        QVERIFY(saved.contains("Size=36") && saved.contains("Underline=1"));
    }

    void ListKeysInOrder() {
        ListBench bench(2);
        bench.Pictures.List->setCurrentRow(1);
        bench.Pictures.UB->setValue(7);
        bench.Pictures.chkCapture->setChecked(true);
        QCOMPARE(bench.Saved(bench.Pictures),
                 QStringList({"Capture=1", "UB=7", "Pic=1", "0Pic=0.png", "1Pic=1.png", "PicGes=2",
                              "PictureEff=true"}));
        bench.Pictures.Open();
        QCOMPARE(bench.Pictures.List->Names(), QStringList({"0.png", "1.png"}));
        QCOMPARE(bench.Pictures.List->currentRow(), 1);
    }

    // Entries of a longer list behind a gap do not come back when a new list reaches them.
    void NothingIsLeftOfALongerList() {
        ListBench bench(3, "4Pic=old.bmp\nPicGes=x\nUB=-5\nPic=77\n");
        QCOMPARE(bench.Pictures.List->currentRow(), 2);
        bench.Pictures.btnRemove->click();
        QVERIFY(bench.Pictures.Save());
        const QStringList lines = bench.Lines();
        for (const QString& line : std::initializer_list<QString>{
                 "1Pic=1.png", "2Pic=", "4Pic=", "PicGes=2", "UB=0", "Pic=1"})
            QVERIFY2(lines.contains(line), qPrintable(line));
    }

    void TheOrderIsChanged() {
        ListBench bench(3);
        PictureList& list = *bench.Pictures.List;
        list.setCurrentRow(2);
        bench.Pictures.btnUp->click();
        bench.Pictures.btnUp->click();
        QCOMPARE(list.Names(), QStringList({"2.png", "0.png", "1.png"}));
        bench.Pictures.btnDown->click();
        QTest::keyClick(&list, Qt::Key_Delete);
        QCOMPARE(list.Names(), QStringList({"0.png", "1.png"}));
        bench.Pictures.btnDeleteList->click();
        QCOMPARE(bench.Boxes.Shown, QStringList("Stillpost: Take all pictures out of the list?"));
        QCOMPARE(list.count(), 2);
        bench.Boxes.Yes = true;
        bench.Pictures.btnDeleteList->click();
        QCOMPARE(list.count(), 0);
    }

    // Pictures from elsewhere are copied, never over another one; those that are there stay.
    void PicturesAreAdopted() {
        ListBench bench(1);
        const QString other = bench.MakePicture("elsewhere/0.png", Qt::blue);
        const QString same = bench.MakePicture("more/0.png", QColor::fromHsv(0, 255, 255));
        const QByteArray kept = ReadBytes(bench.Folder.filePath("overlay/0.png"));
        bench.Pictures.Add({other, same, bench.Folder.filePath("overlay/0.png"), other});
        bench.Time.Advance(0);
        QCOMPARE(bench.Pictures.List->Names(),
                 QStringList({"0.png", "0 (2).png", "0.png", "0.png", "0 (2).png"}));
        QCOMPARE(ReadBytes(bench.Folder.filePath("overlay/0.png")), kept);
        QCOMPARE(ReadBytes(bench.Folder.filePath("overlay/0 (2).png")), ReadBytes(other));
        // Without saving they are gone again.
        bench.Pictures.reject();
        QVERIFY(!QFile::exists(bench.Folder.filePath("overlay/0 (2).png")));
    }

    void WhatIsNoPictureIsToldAtOnce() {
        ListBench bench(0);
        SkinMaker::Write(bench.Folder.filePath("half.jpg"), "\xFF\xD8 cut off");
        const QString good = bench.MakePicture("good.png", Qt::green);
        QList<QUrl> files;
        for (const QString& file :
             {bench.Folder.filePath("half.jpg"), bench.Folder.filePath("gone.bmp"), good})
            files << QUrl::fromLocalFile(file);
        QVERIFY(!Drop(*bench.Pictures.List, {QUrl("http://a.example/a.png")}));
        QVERIFY(Drop(*bench.Pictures.List, files));
        QVERIFY(!bench.Pictures.Save());  // before all are read
        bench.Time.Advance(0);
        QVERIFY(bench.Pictures.Save());
        QCOMPARE(bench.Boxes.Shown.size(), 1);
        QVERIFY(bench.Boxes.Shown[0].contains("half.jpg is damaged"));
        QVERIFY(bench.Boxes.Shown[0].contains("gone.bmp is not in"));
        QVERIFY(bench.Lines().contains("0Pic=good.png") && bench.Lines().contains("PicGes=1"));
    }

    void FiftyAreTheMost() {
        ListBench bench(49);
        const QString a = bench.MakePicture("a/a.png", Qt::red);
        const QString b = bench.MakePicture("a/b.png", Qt::blue);
        bench.Pictures.Add({a, b});
        bench.Time.Advance(0);
        QCOMPARE(bench.Pictures.List->count(), 50);
        QVERIFY(!bench.Pictures.btnAdd->isEnabled());
        QCOMPARE(bench.Boxes.Shown.size(), 1);
        QVERIFY(bench.Boxes.Shown[0].contains("at most 50 pictures"));
        QVERIFY(bench.Saved(bench.Pictures).contains("49Pic=a.png"));
    }

    // The picture that is chosen shows first, over whatever is set beside it, and then the next.
    void ThePreviewBeginsWithTheChosenOne() {
        ListBench bench(0);
        bench.MakePicture("overlay/red.png", Qt::red);
        bench.MakePicture("overlay/blue.png", Qt::blue);
        bench.Write(OverlayBench::Empty + "Overlay=5\n[Picture]\n0Pic=blue.png\n1Pic=red.png\n");
        bench.Pictures.reject();
        bench.Window.Open();
        bench.Window.btnPicture->click();
        const QPoint at(300, 15);
        QVERIFY(!IsRed(bench.Seen(*bench.Pictures.Preview).pixelColor(at)));
        bench.Pictures.List->setCurrentRow(1);
        QVERIFY(IsRed(bench.Seen(*bench.Pictures.Preview).pixelColor(at)));
        QVERIFY(!IsRed(bench.Seen(*bench.Pictures.Preview, 4000).pixelColor(at)));
        QVERIFY(bench.Pictures.Save());
        // A list that was just put together is what the other window shows.
        QCOMPARE(bench.Window.lstEffect->Place(), 4);
    }
};

QTEST_MAIN(TestOverlayWindows)
#include "test_overlay_windows.moc"
