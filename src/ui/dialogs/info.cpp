#include "ui/dialogs/info.h"

#include "core/version.h"
#include "texts/texts.h"
#include "ui/skin/skin.h"
#include "ui/widgets/screen_room.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {

// In pixels, for letters of so many; larger ones make everything larger.
constexpr int fontPixels = 13;
constexpr QSize boxSize(400, 260);
constexpr QRectF text(28, 120, 344, 84);
constexpr QRectF reportButton(62, 216, 170, 30);
constexpr QRectF closeButton(242, 216, 96, 30);
const QColor ground(0x12, 0x42, 0x4e);  // where there is no picture

}  // namespace

Info::Info(const SkinFolders& skinFolders, Texts& ownTexts)
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      Label1(new QLabel(this)),
      btnReport(new QPushButton(this)),
      btnClose(new QPushButton(this)),
      folders(skinFolders),
      texts(ownTexts) {
    Label1->setAlignment(Qt::AlignCenter);
    Label1->setWordWrap(true);
    Label1->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette colours = Label1->palette();
    colours.setColor(QPalette::WindowText, Qt::white);
    Label1->setPalette(colours);
    for (QPushButton* button : {btnReport, btnClose}) {
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, &QWidget::hide);
    }
    connect(btnReport, &QPushButton::clicked, this, &Info::ReportWanted);
    connect(&texts, &Texts::Changed, this, &Info::ShowTexts);
    ShowTexts();
}

void Info::ShowTexts() {
    const auto text = [this](const QString& key) { return texts.Get("Info", key); };
    setWindowTitle(text("Title"));
    Label1->setText("Stillpost " + text("Version").arg(ProgramVersion()) + "\n" + text("Purpose") +
                    "\n" + text("Licence") + "\n" +
                    text("Libraries").arg(QString::fromLatin1(qVersion())));
    btnReport->setText(text("Report"));
    btnClose->setText(text("Close"));
}

void Info::LayOut() {
    const QSizeF room = ScreenRoom(*this);
    const qreal most = qMin(room.width() / boxSize.width(), room.height() / boxSize.height());
    const qreal wanted = qreal(QFontInfo(QApplication::font()).pixelSize()) / fontPixels;
    const qreal factor = qMin(qMax(1.0, wanted), most);
    const auto larger = [factor](const QRectF& place) {
        return QRectF(place.topLeft() * factor, place.size() * factor).toRect();
    };
    setFixedSize(boxSize * factor);
    Label1->setGeometry(larger(text));
    btnReport->setGeometry(larger(reportButton));
    btnClose->setGeometry(larger(closeButton));
    QFont letters = QApplication::font();
    letters.setPixelSize(qMax(1, static_cast<int>(fontPixels * factor)));
    Label1->setFont(letters);
    btnReport->setFont(letters);
    btnClose->setFont(letters);
}

void Info::Show() {
    LayOut();
    Skin shared(folders, SkinFolders::Default);
    background = shared.SharedPicture("InfoBG.jpg");
    show();
    raise();
    activateWindow();
    btnClose->setFocus();
}

void Info::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!background.isNull()) painter.drawPixmap(rect(), background);
}

void Info::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

void Info::mousePressEvent(QMouseEvent* event) {
    drag.Press(*this, *event);
}

void Info::mouseMoveEvent(QMouseEvent* event) {
    drag.Move(*event);
}

void Info::mouseReleaseEvent(QMouseEvent*) {
    drag.Release();
}
