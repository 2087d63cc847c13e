#include "ui/menu/menu_panel.h"

#include "ui/menu/menu_place.h"
#include "ui/skin/rounded_corners.h"
#include "ui/skin/window_system.h"
#include "ui/widgets/menu_row.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int leastFontPixels = 13;
const QColor ink(0x1d, 0x2b, 0x30);
const QColor accent(0xd5, 0xea, 0xed);

}  // namespace

MenuPanel::MenuPanel(QWidget* parent)
    : QWidget(parent, WindowSystem::MenuFlags()), rows(new QVBoxLayout(this)) {
    RoundedCorners::Prepare(*this);
    Dress(*this);
    rows->setSpacing(0);
    rows->setContentsMargins(1, MenuLines::Margin, 1, MenuLines::Margin);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void MenuPanel::Dress(QWidget& window) {
    QPalette colours = window.palette();
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button})
        colours.setColor(role, Qt::white);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        colours.setColor(role, ink);
    colours.setColor(QPalette::Highlight, accent);
    window.setPalette(colours);
    QFont font = QApplication::font();
    font.setPixelSize(std::max(leastFontPixels, QFontInfo(font).pixelSize()));
    window.setFont(font);
}

bool MenuPanel::event(QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange) Dress(*this);
    return QWidget::event(event);
}

MenuRow& MenuPanel::AddRow() {
    auto* row = new MenuRow(this);
    rows->addWidget(row);
    Label1 << row;
    return *row;
}

void MenuPanel::AddGap(int pixels) {
    rows->addSpacing(pixels);
    gaps << static_cast<int>(Label1.size());
}

void MenuPanel::FocusRow() {
    const auto marked = std::find_if(Label1.begin(), Label1.end(),
                                     [](const MenuRow* row) { return row->isChecked(); });
    MenuRow* row = marked == Label1.end() ? Label1.value(0) : *marked;
    if (row) row->setFocus(Qt::PopupFocusReason);
}

void MenuPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home && !Label1.isEmpty())
        Label1.first()->setFocus(Qt::TabFocusReason);
    else if (event->key() == Qt::Key_End && !Label1.isEmpty())
        Label1.last()->setFocus(Qt::TabFocusReason);
    else
        QWidget::keyPressEvent(event);
}

void MenuPanel::paintEvent(QPaintEvent*) {
    RoundedCorners::Paint(*this);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    for (const int gap : gaps) {
        const int y = Label1.at(gap)->y() - MenuLines::Gap / 2;
        painter.drawLine(RoundedCorners::Radius, y, width() - RoundedCorners::Radius, y);
    }
}

void MenuPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    RoundedCorners::Cut(*this);
}
