#pragma once

#include "ui/settings/settings_window.h"

#include <QWizardPage>

class QVBoxLayout;

// A page of the guide: controls bound to settings as in a settings window, a sentence above them
// that says what the page is for, a line below them for what is wrong. It writes nothing; the guide
// takes its entries at the end.
class GuidePage : public QWizardPage {
    Q_OBJECT

  public:
    // name: of the page's texts, "CameraTitle" and "CameraLead". section: of the controls' texts.
    GuidePage(const SettingsWindow::Surroundings& surroundings, const QString& name,
              const QString& section = QStringLiteral("Guide"));

    QLabel* lblNote;

    // Puts the settings into the controls.
    virtual void ShowSettings();
    // The keys of the page with what the controls say.
    [[nodiscard]] virtual QList<ProfileEntry> Entries() const { return controls.Entries(); }
    // In the language in use; the letters for Alt are those that the buttons below leave.
    virtual void ShowTexts(const QList<QAbstractButton*>& below);
    // Where the keyboard begins.
    [[nodiscard]] virtual QWidget* First() const = 0;
    // The Tab key goes through the controls, then to `behind`.
    void SetTabOrder(QWidget* behind) const { controls.SetTabOrder(behind); }

  protected:
    [[nodiscard]] Bindings& Controls() { return controls; }
    [[nodiscard]] Program& Core() const { return around.Core; }
    [[nodiscard]] const Texts& Words() const { return around.Words; }
    // Scrolls where the screen is too small; what is added below it is always seen.
    [[nodiscard]] QVBoxLayout& Body() { return *body; }
    void AddBelow(QWidget* widget);
    // Those of the guide, as ShowTexts had them last.
    [[nodiscard]] const QList<QAbstractButton*>& Buttons() const { return buttons; }
    [[nodiscard]] QString Text(const QString& key) const;
    [[nodiscard]] QString Setting(const QString& key,
                                  const QString& section = "Einstellungen") const;
    // Tells what is wrong with a field and goes there.
    void Refuse(QWidget& field, const QString& why);

  private:
    SettingsWindow::Surroundings around;
    QString pageName;
    Bindings controls;
    QLabel* lblLead;
    QVBoxLayout* body;
    QList<QAbstractButton*> buttons;
};
