#include "support/file_bytes.h"
#include "ui/overlay_bench.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/settings/overlay/picture_list.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QPushButton>

namespace {

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

}  // namespace

class TestFrmBild : public QObject {
    Q_OBJECT

  private slots:
    void KeysInOrder() {
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
        QCOMPARE(bench.Pictures.UB->value(), 7);
        QVERIFY(bench.Pictures.chkCapture->isChecked());
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
        QVERIFY(!bench.Pictures.btnDown->isEnabled());
        bench.Pictures.btnUp->click();
        bench.Pictures.btnUp->click();
        QVERIFY(!bench.Pictures.btnUp->isEnabled());
        QCOMPARE(list.Names(), QStringList({"2.png", "0.png", "1.png"}));
        bench.Pictures.btnDown->click();
        QCOMPARE(list.Names(), QStringList({"0.png", "2.png", "1.png"}));
        QTest::keyClick(&list, Qt::Key_Delete);
        QCOMPARE(list.Names(), QStringList({"0.png", "1.png"}));
    }

    void DeletingTheListIsAskedFor() {
        ListBench bench(2);
        bench.Pictures.btnDeleteList->click();
        QCOMPARE(bench.Boxes.Shown, QStringList("Stillpost: Take all pictures out of the list?"));
        QCOMPARE(bench.Pictures.List->count(), 2);
        bench.Boxes.Yes = true;
        bench.Pictures.btnDeleteList->click();
        QCOMPARE(bench.Pictures.List->count(), 0);
        QVERIFY(bench.Saved(bench.Pictures).contains("PictureEff=false"));
        QVERIFY(QFile::exists(bench.Folder.filePath("overlay/0.png")));
    }

    // Pictures from elsewhere are copied, never over another one; those that are there stay.
    void PicturesAreAdopted() {
        ListBench bench(1);
        const QString other = bench.MakePicture("elsewhere/0.png", Qt::blue);
        const QString odd = bench.MakePicture("elsewhere/a\\b.png", Qt::blue);
        // Where it separates, that is a file of a folder.
        const QString oddAdopted = QFileInfo(odd).fileName().replace('\\', '_');
        const QString same = bench.MakePicture("more/0.png", QColor::fromHsv(0, 255, 255));
        const QByteArray kept = ReadBytes(bench.Folder.filePath("overlay/0.png"));
        bench.Pictures.Add({other, same, bench.Folder.filePath("overlay/0.png"), other, odd});
        bench.Time.Advance(0);
        QCOMPARE(bench.Pictures.List->Names(),
                 QStringList({"0.png", "0 (2).png", "0.png", "0.png", "0 (2).png", oddAdopted}));
        QCOMPARE(ReadBytes(bench.Folder.filePath("overlay/0.png")), kept);
        QCOMPARE(ReadBytes(bench.Folder.filePath("overlay/0 (2).png")), ReadBytes(other));
        // Without saving they are gone again.
        bench.Pictures.reject();
        QVERIFY(!QFile::exists(bench.Folder.filePath("overlay/0 (2).png")));
        QVERIFY(QFile::exists(other));
    }

    void WhatIsNoPictureIsToldAtOnce() {
        ListBench bench(0);
        SkinMaker::Write(bench.Folder.filePath("half.jpg"), "\xFF\xD8 cut off");
        const QString good = bench.MakePicture("good.png", Qt::green);
        bench.Pictures.Add(
            {bench.Folder.filePath("half.jpg"), bench.Folder.filePath("gone.bmp"), good});
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

    // Once for each picture chosen, and not where it takes the place of the camera's.
    void LargerThanTheCamera() {
        const QString camera = OverlayBench::Empty + "Preview=1\n[Cameras]\nCam0=Gate|test:64x48\n";
        ListBench bench(0);
        bench.Write(camera);
        bench.Core->Start();
        bench.Core->Cycle.Stop();
        QTRY_COMPARE(bench.Core->ezVidCap1.Width(), 64);
        const QString warning =
            "Stillpost: Their overlay picture is larger than the camera picture!";
        const QString fits = bench.MakePicture("overlay/fits.png", Qt::red, {64, 48});
        const QString wide = bench.MakePicture("overlay/wide.png", Qt::red, {65, 10});
        const QString high = bench.MakePicture("overlay/high.png", Qt::red, {10, 49});
        bench.Boxes.Shown.clear();
        bench.Pictures.reject();
        bench.Pictures.Open();
        bench.Pictures.Add({fits, wide});
        bench.Time.Advance(3000);
        QCOMPARE(bench.Boxes.Shown, QStringList(warning));
        bench.Pictures.chkCapture->setChecked(true);
        bench.Pictures.Add({high});
        bench.Time.Advance(3000);
        QCOMPARE(bench.Boxes.Shown, QStringList(warning));
        bench.Pictures.chkCapture->setChecked(false);
        QCOMPARE(bench.Boxes.Shown, QStringList({warning, warning}));
        QVERIFY(bench.Pictures.Save());
        // The single picture in the other window, each time it is chosen.
        bench.Window.Open();
        bench.Time.Advance(3000);
        QCOMPARE(bench.Boxes.Shown.size(), 2);
        QComboBox& files = *bench.Window.cbPicture;
        for (const QString& name :
             std::initializer_list<QString>{"fits.png", "high.png", "fits.png", "wide.png"}) {
            files.setCurrentIndex(files.findText(name));
            emit files.activated(files.currentIndex());
            bench.Time.Advance(2000);
        }
        QCOMPARE(bench.Boxes.Shown.size(), 4);
    }

    // The picture that is chosen shows first, over whatever is set beside it, and then the next.
    void ThePreviewBeginsWithTheChosenOne() {
        ListBench bench(2, "UB=30\n");
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
        bench.Pictures.chkCapture->setChecked(true);
        QCOMPARE(bench.Seen(*bench.Pictures.Preview).size(), QSize(40, 30));
        QVERIFY(bench.Pictures.Save());
        // A list that was just put together is what the other window shows.
        QCOMPARE(bench.Window.lstEffect->Place(), 4);
        QCOMPARE(bench.Window.cbPicture->currentIndex(), 0);
        QVERIFY(bench.Window.Save());
        QVERIFY(bench.Lines().contains("PictureEff=true") && bench.Lines().contains("Overlay=4"));
    }

    void AMissingPictureIsNamed() {
        ListBench bench(1, "1Pic=gone.bmp\n");
        bench.Pictures.List->setCurrentRow(1);
        QCOMPARE(bench.Pictures.Preview->Note(),
                 QString("The picture gone.bmp is not in the overlay folder."));
        bench.Pictures.List->setCurrentRow(0);
        QCOMPARE(bench.Pictures.Preview->Note(), QString());
    }

    void TheFileChooserTakesSeveral() {
        ListBench bench(0);
        bench.Pictures.btnAdd->click();
        auto* chooser = bench.Pictures.findChild<QFileDialog*>();
        QVERIFY(chooser);
        QCOMPARE(chooser->fileMode(), QFileDialog::ExistingFiles);
        const QString picture = bench.MakePicture("overlay/a.png", Qt::red);
        emit chooser->filesSelected({picture});
        bench.Time.Advance(0);
        QCOMPARE(bench.Pictures.List->Names(), QStringList("a.png"));
        chooser->reject();
    }

    void TextsAndKeyboard() {
        ListBench bench(3);
        QCOMPARE(ClippedAnywhere(bench.Pictures, bench.Words).join("\n"), QString());
        bench.Pictures.List->setCurrentRow(1);
        bench.Pictures.List->setFocus();
        QCOMPARE(TabFaults(bench.Pictures).join("\n"), QString());
    }
};

QTEST_MAIN(TestFrmBild)
#include "test_frm_bild.moc"
