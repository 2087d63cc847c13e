#include "ui/settings/overlay/font_chooser.h"

#include "ui/settings/bindings.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace {

// Pictures know no struck-out text.
void HideStrikeOut(const QFontDialog& chooser) {
    const QString caption = QCoreApplication::translate("QFontDialog", "Stri&keout");
    for (auto* box : chooser.findChildren<QCheckBox*>())
        if (box->text() == caption) box->hide();
}

}  // namespace

int FontChooser::Choice::NameIndex() const {
    return static_cast<int>(qMax<qsizetype>(QFontDatabase::families().indexOf(Name), 0));
}

int FontChooser::Choice::PointsIndex() const {
    return static_cast<int>(qMax<qsizetype>(QFontDatabase::standardSizes().indexOf(Points), 0));
}

FontChooser::FontChooser(Bindings& bindings, const std::function<bool()>& enabled)
    : btnFont(new QPushButton(this)),
      chkUsualSize(new QCheckBox(this)),
      words(bindings),
      lblFont(new QLabel(this)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins({});
    lblFont->setTextFormat(Qt::PlainText);
    lblFont->setWordWrap(true);
    grid->addWidget(btnFont, 0, 0);
    grid->addWidget(lblFont, 0, 1);
    grid->addWidget(chkUsualSize, 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    bindings.Add(btnFont, {.Text = "FontButton", .Help = "FontHelp", .Enabled = enabled});
    bindings.Add(lblFont, {.Caption = [this] { return Described(); }, .Enabled = enabled});
    bindings.Add(chkUsualSize, {.Text = "UsualSize", .Enabled = enabled});
    connect(btnFont, &QPushButton::clicked, this, &FontChooser::Choose);
    connect(chkUsualSize, &QCheckBox::toggled, this, [this](bool usual) {
        Choice changed = choice;
        changed.Points = usual ? 0 : usualPoints;
        SetChoice(changed);
    });
}

void FontChooser::SetChoice(const Choice& newChoice) {
    const bool other = newChoice != choice;
    choice = newChoice;
    const QSignalBlocker quiet(chkUsualSize);
    chkUsualSize->setChecked(choice.Points == 0);
    lblFont->setText(Described());
    if (other) emit Changed();
}

void FontChooser::Choose() {
    const int points = choice.Points == 0 ? usualPoints : choice.Points;
    QFont font;
    if (!choice.Name.isEmpty()) font.setFamily(choice.Name);
    font.setPointSize(points);
    font.setBold(choice.Bold);
    font.setItalic(choice.Italic);
    font.setUnderline(choice.Underline);
    auto* chooser = new QFontDialog(font, this);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setOption(QFontDialog::DontUseNativeDialog);
    chooser->setWindowTitle(words.Text("FontButton"));
    HideStrikeOut(*chooser);
    connect(chooser, &QFontDialog::currentFontChanged, this,
            [this, points](const QFont& chosen) { Take(chosen, points); });
    connect(chooser, &QDialog::rejected, this, [this, old = choice] { SetChoice(old); });
    chooser->open();
}

// A size that was left alone does not stop being the usual one.
void FontChooser::Take(const QFont& font, int beginPoints) {
    const bool usual = choice.Points == 0 && font.pointSize() == beginPoints;
    SetChoice({font.family(), usual ? 0 : font.pointSize(), font.bold(), font.italic(),
               font.underline()});
}

QString FontChooser::Described() const {
    QStringList parts{choice.Name.isEmpty() ? words.Text("UsualFont") : choice.Name};
    if (choice.Points != 0) parts << words.Text("Points").arg(choice.Points);
    if (choice.Bold) parts << words.Text("Bold");
    if (choice.Italic) parts << words.Text("Italic");
    if (choice.Underline) parts << words.Text("Underline");
    return parts.join(", ");
}
