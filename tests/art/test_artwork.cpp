#include "base/status_hub.h"
#include "core/run_state.h"
#include "support/data_rows.h"
#include "texts/texts.h"
#include "ui/main/link_button.h"
#include "ui/skin/picture_box.h"
#include "ui/status/frm_status.h"
#include "ui/status/readout_label.h"
#include "ui/widgets/preview_area.h"
#include "ui/window_fixture.h"

namespace {

// The controls of a window that are not wholly on its body, or on another; except those.
QStringList Misplaced(const ShapedWindow& window, const QList<const QWidget*>& except) {
    QStringList wrong;
    QRegion taken;
    for (const QWidget* control :
         window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (control->isHidden() || except.contains(control)) continue;
        const QString name =
            QLatin1String(control->metaObject()->className()) + control->objectName();
        if (!(QRegion(control->geometry()) - window.Outline()).isEmpty())
            wrong << name + " leaves the body";
        if (taken.intersects(control->geometry())) wrong << name + " is on another";
        taken += control->geometry();
    }
    return wrong;
}

}  // namespace

class TestArtwork : public QObject {
    Q_OBJECT

  private slots:
    void ControlsStandFree_data() {
        Rows<QString>({{"Default"}, {"silver 1024"}, {"Night Watch"}});
    }

    void ControlsStandFree() {
        const auto [skin] = Row<QString>();
        WindowFixture program;
        program.Skins = SkinFolders({STILLPOST_PROGRAM});
        program.Set("Einstellungen", "Skin", skin);
        program.Start();
        const frmSkin& window = *program.Window;
        QCOMPARE(Misplaced(window, {window.pic_klappe, window.lblStatus}), QStringList());
        QVERIFY(window.lblStatus->isVisible() && window.btnRemedy->isHidden());
        program.Core->Run.Enter(RunState::WaitingToRetry, Trouble{"why", TroubleKind::Login});
        QVERIFY(window.lblStatus->isHidden() && window.btnRemedy->isVisible());
        QVERIFY(window.pic_klappe->isHidden() ||
                window.pic_klappe->geometry().contains(window.preview->geometry()));
        Texts words(Texts::Language::English);
        frmStatus status(*program.Core, program.Skins, words);
        status.Show();
        StatusHub& display = program.Core->Display;
        display.ShowStatus("Send 1234567 Bytes of 1pw.jpg");
        display.ShowOnline(true);
        display.ShowRecording("Rec.");
        display.ShowPictureCount("Pic: 123456");
        display.ShowMegabytes("MB: 12345.67");
        display.ShowTimeOutLabel(45);
        display.ShowTimeOutGauge(45);
        QCOMPARE(Misplaced(status, {}), QStringList());
        for (const ReadoutLabel* label : status.findChildren<ReadoutLabel*>())
            QVERIFY2(!label->Cut(), qPrintable(label->objectName() + ": " + label->text()));
        QCOMPARE(program.Boxes.Shown, QStringList());
    }

    void EverythingIsThere() {
        QStringList files{
            "Skins/Default/Hacken0.jpg", "Skins/Default/Hacken.jpg", "Skins/Default/Hacken2.jpg",
            "Skins/Default/Hacken3.jpg", "Skins/Default/InfoBG.jpg", "Skins/Default/startbg.jpg",
            "overlay/Overlay.bmp",       "Offline/Offline.jpg",      "icons/stillpost.ico"};
        for (const char* const icon :
             {"stillpost", "tray-running", "tray-paused", "tray-stopped", "tray-offline"})
            for (const int size : {16, 22, 24, 32})
                files << QStringLiteral("icons/%1-%2.png").arg(QLatin1String(icon)).arg(size);
        for (const QString& file : files)
            QVERIFY2(!QImage(QStringLiteral(STILLPOST_PROGRAM "/") + file).isNull(),
                     qPrintable(file));
    }
};

QTEST_MAIN(TestArtwork)
#include "test_artwork.moc"
