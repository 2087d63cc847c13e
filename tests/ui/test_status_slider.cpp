#include "support/data_rows.h"
#include "ui/status/label_room.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"
#include "ui/status/status_texts.h"

#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

namespace {

// A slider of 224 pixels in a window that is not shown; its handle is 24 pixels wide.
class SliderBench {
  public:
    explicit SliderBench(const SliderValues& values) : Slider(values, nullptr) {
        QPixmap track(224, 20);
        track.fill(Qt::gray);
        QPixmap handle(24, 24);
        handle.fill(Qt::blue);
        Slider.SetPictures(track, handle, {});
        Slider.Place({100, 50}, 48);
    }

    void Mouse(QEvent::Type type, double x, Qt::MouseButton button = Qt::LeftButton) {
        const QPointF at(x, Slider.Handle().center().y());
        const bool released = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, at, type == QEvent::MouseMove ? Qt::NoButton : button,
                          released ? Qt::NoButton : button, Qt::NoModifier);
        QCoreApplication::sendEvent(&Slider, &event);
    }
    void Press() { Mouse(QEvent::MouseButtonPress, Slider.Handle().center().x()); }
    void Move(double x) { Mouse(QEvent::MouseMove, x); }
    void Release() { Mouse(QEvent::MouseButtonRelease, Slider.Handle().center().x()); }

    PictureSlider Slider;
};

}  // namespace

class TestStatusSlider : public QObject {
    Q_OBJECT

  private slots:
    // Each of them has a pixel of its own on the track.
    void IntervalsThatOperatorsWant() {
        SliderBench bench(IntervalValues);
        QSet<int> hit;
        bench.Press();
        for (int x = 12; x <= 212; ++x) {
            bench.Move(x);
            hit << bench.Slider.value();
        }
        for (const int wanted : {100, 1000, 5000, 10'000, 30'000, 60'000, 120'000, 300'000})
            QVERIFY2(hit.contains(wanted), qPrintable(QString::number(wanted)));
        for (const int value : hit) QVERIFY(value % 100 == 0);
    }

    void Steps_data() {
        const Rows<bool, int, int, int> row;
        row("quality up", false, 50, int(Qt::Key_Up), 51);
        row("quality down at the end", false, 20, int(Qt::Key_Left), 20);
        row("tenths below a second", true, 900, int(Qt::Key_Right), 1000);
        row("down from a second", true, 1000, int(Qt::Key_Down), 900);
        row("seconds", true, 1000, int(Qt::Key_Up), 2000);
        row("down from ten seconds", true, 10'000, int(Qt::Key_Left), 9000);
        row("up from ten seconds", true, 10'000, int(Qt::Key_Right), 15'000);
        row("an odd value first becomes even", true, 12'340, int(Qt::Key_Up), 15'000);
        row("page", true, 5000, int(Qt::Key_PageUp), 30'000);
        row("page down", true, 60'000, int(Qt::Key_PageDown), 30'000);
        row("page down to the end", true, 5000, int(Qt::Key_PageDown), 100);
        row("home", true, 5000, int(Qt::Key_Home), 100);
        row("end", true, 5000, int(Qt::Key_End), 300'000);
    }

    void Steps() {
        const auto [interval, from, key, to] = Row<bool, int, int, int>();
        PictureSlider slider(interval ? IntervalValues : QualityValues, nullptr);
        slider.SetValue(from);
        const QSignalSpy chosen(&slider, &PictureSlider::Chosen);
        // A key held down offers a value each time it repeats and chooses once.
        QTest::keyPress(&slider, Qt::Key(key));
        QCOMPARE(slider.value(), to);
        QVERIFY(slider.Choosing() && chosen.isEmpty());
        QTest::keyRelease(&slider, Qt::Key(key));
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen[0][0].toInt(), to);
    }

    void DraggingWithTheMouse() {
        SliderBench bench(QualityValues);
        PictureSlider& slider = bench.Slider;
        slider.SetValue(50);
        QCOMPARE(slider.geometry(), QRect(100, 48, 224, 24));
        QCOMPARE(slider.Handle(), QRect(100, 0, 24, 24));
        const QSignalSpy offered(&slider, &PictureSlider::Offered);
        const QSignalSpy chosen(&slider, &PictureSlider::Chosen);
        bench.Press();
        bench.Move(142);
        QCOMPARE(slider.value(), 59);
        QCOMPARE(slider.Handle().left(), 130);
        // Beyond the end nothing happens, not even a move to the end.
        bench.Move(300);
        QCOMPARE(slider.value(), 59);
        QCOMPARE(slider.Handle().left(), 130);
        QCOMPARE(offered.size(), 1);
        // Settings read meanwhile do not pull it out of the operator's hand.
        slider.SetValue(20);
        QCOMPARE(slider.value(), 59);
        bench.Move(212);
        bench.Release();
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen[0][0].toInt(), 80);
        bench.Move(50);
        QCOMPARE(slider.value(), 80);
    }

    void NotDragged_data() {
        const Rows<Qt::MouseButton, int, int> row;  // button, at, to
        row("right button", Qt::RightButton, 112, 142);
        row("beside the handle", Qt::LeftButton, 150, 170);
        // It leaves a value beyond the range as it is.
        row("a mere click", Qt::LeftButton, 112, 112);
    }

    void NotDragged() {
        const auto [button, at, to] = Row<Qt::MouseButton, int, int>();
        SliderBench bench(QualityValues);
        bench.Slider.SetValue(50);
        const QSignalSpy chosen(&bench.Slider, &PictureSlider::Chosen);
        bench.Mouse(QEvent::MouseButtonPress, at, button);
        if (to != at) bench.Mouse(QEvent::MouseMove, to, button);
        bench.Mouse(QEvent::MouseButtonRelease, to, button);
        QCOMPARE(bench.Slider.value(), 50);
        QVERIFY(chosen.isEmpty() && !bench.Slider.Choosing());
    }

    void Texts_data() {
        const Rows<QString, QString> row;
        row("half a tenth is one", StatusTexts::Interval(1250), "1 Pic. / 1.3 s");
        row("carried", StatusTexts::Interval(9950), "1 Pic. / 10.0 s");
        row("unknown overlay", StatusTexts::Overlay(9), "No Overlay");
        row("fifty days", StatusTexts::RunningTime(4'320'059'000), "1200:00:59");
    }

    void Texts() {
        const auto [text, expected] = Row<QString, QString>();
        QCOMPARE(text, expected);
    }

    void RoomForLabels_data() {
        const Rows<QRect, int> row;
        row("none beside it: to the end", QRect(200, 60, 50, 20), 300);
        row("neighbour on the same line", QRect(200, 40, 50, 20), 92);
        row("one that begins further left", QRect(90, 40, 300, 20), 300);
        row("no room at all", QRect(104, 40, 50, 20), 0);
    }

    void RoomForLabels() {
        const auto [neighbour, width] = Row<QRect, int>();
        const QRect label(100, 40, 999, 20);
        QCOMPARE(LabelRoom::Width(label, {label, neighbour}, 400), width);
    }

    void LongTextsAreCut() {
        ReadoutLabel label(nullptr);
        const QString words = "A line that tells at some length what the program is doing now";
        label.setText(words);
        label.resize(2000, 20);
        QVERIFY(!label.Cut());
        QCOMPARE(label.Lines(), QStringList(words));
        label.resize(150, 20);
        QVERIFY(label.Cut() && label.Lines()[0].startsWith("A line"));
        label.setWordWrap(true);
        label.resize(80, 3 * label.fontMetrics().lineSpacing());
        QCOMPARE(label.Lines().size(), 3);
        QVERIFY(words.startsWith(label.Lines()[0] + " " + label.Lines()[1]));
        for (const QString& line : label.Lines())
            QVERIFY(label.fontMetrics().horizontalAdvance(line) <= label.width());
        label.resize(80, 300);
        QCOMPARE(label.Lines().join(u' '), words);
    }
};

QTEST_MAIN(TestStatusSlider)
#include "test_status_slider.moc"
