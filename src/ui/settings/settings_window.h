#pragma once

#include "base/clock.h"
#include "texts/texts.h"
#include "ui/settings/bindings.h"

#include <QDialog>

class FittingArea;
class MessageBoxes;
class Program;
class QLabel;
class QPushButton;
class QVBoxLayout;

// What all settings windows have in common: they show what the settings file says when they are
// opened, write all of their keys or none when saved, and change nothing when closed. Enter saves,
// Escape closes. Texts come from the section of the window's name, in the language in use.
class SettingsWindow : public QDialog {
    Q_OBJECT

  public:
    // All outlive the window.
    struct Surroundings {
        Program& Core;
        Texts& Words;
        MessageBoxes& Boxes;
    };
    SettingsWindow(const Surroundings& surroundings, const QString& textSection, QWidget* parent);

    QPushButton* btnSave;
    QPushButton* btnClose;
    QLabel* lblNote;  // what is wrong with a field; empty while nothing is

    // Shows the settings as they are now, in front of the other windows. A window that is open
    // already keeps what was typed into it.
    void Open();

    // The same at the control of that name, with what is wrong with it.
    void OpenAt(const QString& field, const QString& why);

    // Writes the settings, hands them to the program and hides the window. False, and the window
    // stays: a field is not right or the file cannot be written; the operator is told.
    bool Save();

  signals:
    void Saved();

  public slots:
    void accept() override { (void)Save(); }

  protected:
    // The controls of the window; see there.
    Bindings Controls;

    // Puts the settings into the controls.
    virtual void ShowSettings() { Controls.ShowSettings(SettingsFile()); }
    // The keys of the window with what the controls say, in the order in which they are written.
    [[nodiscard]] virtual QList<ProfileEntry> Entries() const { return Controls.Entries(); }
    // What must hold before anything is written; tells the operator what does not.
    [[nodiscard]] virtual bool Check() { return true; }
    // Sets the texts of all controls; also called when the language changes. Calls the inherited
    // one last, because it gives out the letters.
    virtual void ShowTexts();

    // Grows when longer texts or a larger font need more room.
    bool event(QEvent* event) override;

    // To be called at the end of the constructor.
    void Finish();

    [[nodiscard]] const Surroundings& Around() const { return around; }
    [[nodiscard]] Program& Core() const { return around.Core; }
    [[nodiscard]] Texts& Words() const { return around.Words; }
    [[nodiscard]] MessageBoxes& Boxes() const { return around.Boxes; }
    [[nodiscard]] QVBoxLayout& Body() { return *body; }
    [[nodiscard]] QString SettingsFile() const;
    [[nodiscard]] QString Text(const QString& key) const;
    [[nodiscard]] QString Setting(const QString& key,
                                  const QString& section = "Einstellungen") const;
    [[nodiscard]] bool Flag(const QString& key, const QString& section = "Einstellungen") const;
    // A value of this window's keys for section "Einstellungen".
    [[nodiscard]] static ProfileEntry Entry(const QString& key, const QString& value);
    [[nodiscard]] static ProfileEntry Entry(const QString& key, bool on);
    [[nodiscard]] static ProfileEntry Entry(const QString& key, int number);
    static ProfileEntry Entry(const QString& key,
                              const char* value) = delete;  // it would be a bool

    // Tells what is wrong with a field and goes there, wherever it is in the window.
    void Refuse(QWidget& field, const QString& why);

  private:
    void FitToScreen();
    void MoveOntoScreen();

    Surroundings around;
    FittingArea* area;
    Timer settled;  // since the window has got its size
    QVBoxLayout* body;
};
