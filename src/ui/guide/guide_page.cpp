#include "ui/guide/guide_page.h"

#include "core/program.h"
#include "ui/widgets/fitting_area.h"
#include "ui/widgets/mnemonics.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

GuidePage::GuidePage(const SettingsWindow::Surroundings& surroundings, const QString& ownName,
                     const QString& section)
    : lblNote(new QLabel),
      around(surroundings),
      pageName(ownName),
      controls(surroundings.Words, section),
      lblLead(new QLabel),
      body(new QVBoxLayout) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    auto* area = new FittingArea(this);
    auto* inside = new QWidget;
    auto* column = new QVBoxLayout(inside);
    column->setContentsMargins({});
    column->addWidget(lblLead);
    column->addLayout(body, 1);
    area->setWidget(inside);
    inside->installEventFilter(area);
    all->addWidget(area, 1);
    all->addWidget(lblNote);
    for (QLabel* label : {lblLead, lblNote}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    QFont bold = lblNote->font();
    bold.setBold(true);
    lblNote->setFont(bold);
}

void GuidePage::AddBelow(QWidget* widget) {
    auto* all = static_cast<QVBoxLayout*>(layout());
    all->insertWidget(all->indexOf(lblNote), widget);
}

void GuidePage::ShowSettings() {
    lblNote->clear();
    controls.ShowSettings(Core().SettingsFile());
}

void GuidePage::ShowTexts(const QList<QAbstractButton*>& below) {
    setTitle(Text(pageName + "Title"));
    lblLead->setText(Text(pageName + "Lead"));
    lblNote->clear();
    controls.ShowTexts();
    AssignMnemonics(*this, below);
    buttons = below;
}

QString GuidePage::Text(const QString& key) const {
    return around.Words.Get("Guide", key);
}

QString GuidePage::Setting(const QString& key, const QString& section) const {
    return ReadSetting(Core().SettingsFile(), section, key);
}

void GuidePage::Refuse(QWidget& field, const QString& why) {
    lblNote->setText(why);
    field.setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(&field)) line->selectAll();
}
