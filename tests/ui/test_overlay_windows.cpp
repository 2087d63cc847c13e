#include "support/data_rows.h"
#include "ui/overlay_bench.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/font_chooser.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/texts/messages.h"
#include "ui/texts/toolkit_texts.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

using enum Texts::Language;

class TestOverlayWindows : public QObject {
    Q_OBJECT

  private slots:
    // What was saved is shown again and saved the same; numbers and words that make no sense, and
    // files that are gone, become what is valid.
    void SettingsAreShownAndSaved_data() {
        const Rows<QString, QString> row;
        row("nothing", "Sprache=english",
            "Date=0;Time=0;Overlay=0;Text=Date;Position=0;PositionX=0;PositionY=0;PositionBild=0;"
            "Font=;FontIndex=0;Size=0;SizeIndex=0;Color=16777215;BackColor=0;Transparent=0;Bold=0;"
            "Italic=0;Underline=0;Overlayfile=Overlay.bmp;OverKombi=0;PictureEff=false");
        row("another choice everywhere",
            "Date=4;Time=3;Overlay=3;Position=6;PositionX=7;PositionY=-8;PositionBild=5;"
            "Font=DejaVu Sans Mono;Size=24;Color=255;BackColor=65280;Transparent=1;Bold=1;Italic=1;"
            "Underline=1;Overlayfile=sun.png;OverKombi=1;PictureEff=true",
            "Date=4;Time=3;Overlay=3;Text=special Text;Position=6;PositionX=7;PositionY=-8;"
            "PositionBild=5;Font=DejaVu Sans Mono;Size=24;Color=255;BackColor=65280;Transparent=1;"
            "Bold=1;Italic=1;Underline=1;Overlayfile=sun.png;OverKombi=1;PictureEff=true");
        row("out of range",
            "Date=5;Time=-1;Overlay=6;Position=7;PositionBild=99;Size=-3;Color=16777216;"
            "BackColor=-1;PictureEff=True",
            "Date=0;Time=0;Overlay=5;Position=0;PositionBild=0;Size=0;BackColor=0;"
            "PictureEff=false;Text=");
        row("words for numbers",
            "Date=today;Time=now;Overlay=x;Position=here;PositionX=left;PositionBild=no;Size=big;"
            "Color=red;BackColor=blue;Bold=yes;Overlayfile=no such.bmp",
            "Date=0;Time=0;Overlay=0;Position=0;PositionX=0;PositionBild=0;Size=0;BackColor=0;"
            "Bold=0;Overlayfile=no such.bmp");
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

    void TextKeysInOrder() {
        OverlayBench bench;
        bench.Lines8.Open();
        bench.Lines8.Lin[1]->setText(" \"Hello\" ");
        bench.Lines8.optRows->setChecked(true);
        bench.Lines8.Pic->setValue(12);
        const QStringList saved = bench.Saved(bench.Lines8);
        QCOMPARE(saved,
                 QStringList({"Effect=Zeile", "Pic=12", "UB=0", "Lin0=", "Lin1=\" \"Hello\" \"",
                              "Lin2=", "Lin3=", "Lin4=", "Lin5=", "Lin6=", "Lin7=", "Overlay=3"}));
        bench.Lines8.Open();
        QCOMPARE(bench.Lines8.Lin[1]->text(), QString(" \"Hello\" "));
        QVERIFY(bench.Lines8.optRows->isChecked() && bench.Lines8.chkDateFirst->isChecked());
        bench.Lines8.chkDateFirst->setChecked(false);
        bench.Lines8.optWhole->setChecked(true);
        bench.Lines8.Lin[1]->clear();
        QVERIFY(bench.Lines8.Save());
        QVERIFY(bench.Lines().contains("UB=1") && !bench.Lines().contains("Effect=Zeile"));
        bench.Lines8.Open();
        QVERIFY(bench.Lines8.optWhole->isChecked() && !bench.Lines8.chkDateFirst->isChecked());
    }

    // A kind of overlay that shows the lines already stays, in the file and in the other window.
    void SavedLinesAreShown_data() {
        const Rows<int, QString, int> row;
        row("date alone", 0, "Overlay=3", 3);
        row("special text", 3, "Overlay=3", 3);
        row("nothing", 5, "Overlay=3", 3);
    }

    void SavedLinesAreShown() {
        const auto [mode, written, shown] = Row<int, QString, int>();
        OverlayBench bench("[Einstellungen]\nOverlay=" + QString::number(mode) + "\n");
        bench.Window.Open();
        bench.Window.btnText->click();
        QVERIFY(bench.Lines8.isVisible());
        bench.Lines8.Lin[2]->setText("Harbour");
        QVERIFY(bench.Lines8.Save());
        QVERIFY(bench.Lines().contains(written));
        QCOMPARE(bench.Window.lstEffect->Place(), shown);
        QCOMPARE(bench.Window.lblText->text(), QString("Harbour"));
    }

    void TextsFitInAllLanguages() {
        OverlayBench bench;
        QCOMPARE(ClippedAnywhere(bench.Window, bench.Words).join("\n"), QString());
        bench.Window.hide();
        QCOMPARE(ClippedAnywhere(bench.Lines8, bench.Words).join("\n"), QString());
        bench.Words.SetLanguage(German);
        QVERIFY(Captions(bench.Lines8).contains("8. Zeile:"));
    }

    // Message boxes and choosers are the toolkit's, and follow a change of the language.
    void TheToolkitSpeaksTheLanguage() {
        Texts words(German);
        const ToolkitTexts toolkit(words);
        const QMessageBox question(QMessageBox::Question, "", "", QMessageBox::No);
        QCOMPARE(question.button(QMessageBox::No)->text(), QString("&Nein"));
        const auto size = [] { return QCoreApplication::translate("QFileSystemModel", "Size"); };
        QCOMPARE(size(), QString("Größe"));
        words.SetLanguage(French);
        QCOMPARE(size(), QString("Taille"));
        words.SetLanguage(English);
        QCOMPARE(size(), QString("Size"));
    }

    void TheKeyboardReachesEverything() {
        OverlayBench bench;
        bench.Window.Open();
        bench.Window.chkKombi->setChecked(true);
        QCOMPARE(TabFaults(bench.Window).join("\n"), QString());
        bench.Lines8.Open();
        bench.Lines8.optRows->setChecked(true);
        bench.Lines8.Lin[0]->setFocus();
        QCOMPARE(TabFaults(bench.Lines8).join("\n"), QString());
    }

    // The heading is no choice: the wheel, the keys and the mouse pass it by.
    void HeadingsCannotBeChosen() {
        OverlayBench bench;
        bench.Window.Open();
        bench.Window.lstEffect->SetPlace(1);
        for (int i = 0; i < 3; ++i) QTest::keyClick(bench.Window.lstEffect, Qt::Key_Up);
        QTest::keyClick(bench.Window.lstEffect, Qt::Key_Home);
        QCOMPARE(bench.Window.lstEffect->Place(), 0);
        QCOMPARE(bench.Window.lstEffect->currentText(), QString("Date"));
    }

    // The preview is what would be published: each control shows in it at once, and neither the
    // working folder nor the turns of the running cycle notice.
    void ThePreviewIsWhatWillBeSent() {
        OverlayBench bench;
        bench.MakePicture("overlay/sun.png", Qt::red);
        bench.Window.Open();
        const QImage date = bench.Seen(*bench.Window.Preview);
        QCOMPARE(date.size(), QSize(320, 240));
        bench.Window.lstEffect->SetPlace(5);
        const QImage plain = bench.Seen(*bench.Window.Preview);
        QVERIFY(date.copy(160, 0, 160, 20) != plain.copy(160, 0, 160, 20));
        bench.Window.lstEffect->SetPlace(4);
        bench.Window.cbPicture->setCurrentIndex(bench.Window.cbPicture->findText("sun.png"));
        emit bench.Window.cbPicture->activated(1);
        for (const auto& [place, at] :
             {std::pair(4, QPoint(20, 225)), std::pair(0, QPoint(300, 15))}) {
            bench.Window.lstPositionBild->SetPlace(place);
            QVERIFY(IsRed(bench.Seen(*bench.Window.Preview).pixelColor(at)));
        }
        bench.Window.lstEffect->SetPlace(0);
        bench.Window.chkKombi->setChecked(true);
        bench.Window.lstPosition->SetPlace(6);
        bench.Window.btnBackColor->SetColour(Qt::red);
        const QImage both = bench.Seen(*bench.Window.Preview);
        QVERIFY(IsRed(both.pixelColor(300, 15)));
        // The ground behind the date, at the lower edge of its line.
        QVERIFY(IsRed(both.pixelColor(160, 126)) || IsRed(both.pixelColor(160, 114)));
        bench.Window.chkTransparent->setChecked(true);
        QVERIFY(!IsRed(bench.Seen(*bench.Window.Preview).pixelColor(160, 126)));
        QCOMPARE(QDir(bench.Core->State.Values.WorkPath).entryList(QDir::Files), QStringList());
        QCOMPARE(bench.Lines(), QStringList("CaptureFormat=320x240"));
    }

    void EveryControlShowsAtOnce() {
        OverlayBench bench;
        frmOverlay& overlay = bench.Window;
        overlay.Open();
        bench.Lines8.Open();
        qint64 overlayAt = 0;
        qint64 textAt = 0;
        const auto now = [&bench] { return bench.Time.Milliseconds(); };
        connect(overlay.Preview, &OverlayPreview::Renewed, this, [&] { overlayAt = now(); });
        connect(bench.Lines8.Preview, &OverlayPreview::Renewed, this, [&] { textAt = now(); });
        const auto renews = [&](const qint64& at, const std::function<void()>& change) {
            bench.Time.Advance(230);  // any other than a whole second
            const qint64 begin = now();
            change();
            bench.Time.Advance(50);
            return at == begin + 40;
        };
        QVERIFY(!renews(overlayAt, [] {}));
        for (HeadedList* list : {overlay.lstEffect, overlay.lstPosition, overlay.lstPositionBild})
            QVERIFY(renews(overlayAt, [list] { list->SetPlace(1); }));
        for (QComboBox* list : {overlay.cbDate, overlay.cbTime})
            QVERIFY(renews(overlayAt, [list] { list->setCurrentIndex(1); }));
        for (QCheckBox* box :
             {overlay.chkKombi, overlay.chkTransparent, overlay.Font->chkUsualSize})
            QVERIFY(renews(overlayAt, [box] { box->toggle(); }));
        for (ColourButton* button : {overlay.btnColor, overlay.btnBackColor})
            QVERIFY(renews(overlayAt, [button] { button->SetColour(Qt::green); }));
        QVERIFY(renews(overlayAt, [&] { emit overlay.cbPicture->activated(0); }));
        for (QLineEdit* line : bench.Lines8.Lin)
            QVERIFY(renews(textAt, [line] { line->setText("x"); }));
        QVERIFY(renews(textAt, [&] { bench.Lines8.optRows->setChecked(true); }));
        QVERIFY(renews(textAt, [&] { bench.Lines8.Pic->setValue(9); }));
        QVERIFY(renews(textAt, [&] { bench.Lines8.chkDateFirst->toggle(); }));
    }

    void RowsTakeTurnsOnlyInThePreview() {
        OverlayBench bench(
            OverlayBench::Empty +
            "Overlay=3\n[Text]\nLin0=WWWWWWWW\nLin1=WWWWWWWWWWWWWWWW\nEffect=Zeile\nPic=9\nUB=1\n");
        bench.Window.Open();
        const QImage first = bench.Seen(*bench.Window.Preview);
        const QImage changed = [&] {
            bench.Window.Preview->Renew();
            return bench.Seen(*bench.Window.Preview);
        }();
        QVERIFY(changed == first);
        QVERIFY(bench.Seen(*bench.Window.Preview, 3500) != first);
        bench.Window.reject();
        bench.Time.Advance(5000);
        QVERIFY(bench.Window.Preview->Picture().isNull());
    }

    // Every colour and font pointed at shows; cancelling brings back what was there.
    void ChoosersAreLiveAndCanBeCancelled() {
        OverlayBench bench;
        bench.Window.Open();
        bench.Window.btnBackColor->click();
        auto* colours = bench.Window.findChild<QColorDialog*>();
        QVERIFY(colours);
        colours->setCurrentColor(Qt::red);
        QCOMPARE(bench.Window.btnBackColor->Colour(), QColor(Qt::red));
        colours->reject();
        QCOMPARE(bench.Window.btnBackColor->Colour(), QColor(Qt::black));

        bench.Window.Font->btnFont->click();
        auto* fonts = bench.Window.findChild<QFontDialog*>();
        QVERIFY(fonts);
        QFont font = fonts->currentFont();
        font.setUnderline(true);
        fonts->setCurrentFont(font);
        QVERIFY(bench.Window.Font->Chosen().Underline);
        QCOMPARE(bench.Window.Font->Chosen().Points, 0);
        font.setPointSize(36);
        fonts->setCurrentFont(font);
        fonts->accept();
        QCOMPARE(bench.Window.Font->Chosen().Points, 36);
        QVERIFY(!bench.Window.Font->chkUsualSize->isChecked());
        const QStringList saved = bench.Saved(bench.Window);
        QVERIFY(saved.contains("Size=36") && saved.contains("Underline=1"));
        QVERIFY(!saved.contains("SizeIndex=0"));
    }
};

QTEST_MAIN(TestOverlayWindows)
#include "test_overlay_windows.moc"
