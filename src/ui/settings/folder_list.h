#pragma once

#include "ui/settings/background.h"

#include <QListWidget>

// The folders in a folder. A double click or Enter opens one, Backspace or the first entry the one
// above. What is in a folder is read in the background.
class FolderList : public QListWidget {
    Q_OBJECT

  public:
    explicit FolderList(QWidget* parent = nullptr);

    // What the entry that leads up is called.
    void SetUpText(const QString& text);

    // Reads the folder and shows it; the former one stays when that fails.
    // orAbove: the nearest folder above it that can be read will do.
    void Open(const QString& folder, bool orAbove = false);
    void OpenAbove();
    // Makes a folder in the open one and opens it; false when that fails.
    [[nodiscard]] bool MakeFolder(const QString& name);

    // The folder that is open, a full path; empty before the first.
    [[nodiscard]] QString Folder() const { return open; }
    // The one that is marked in it, else itself.
    [[nodiscard]] QString Path() const;
    [[nodiscard]] bool Reading() const { return reading; }

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    void ReadingStarted();
    void Opened();
    void Unreadable(const QString& folder);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Content {
        QString Folder;  // that was read; empty when none could be
        QStringList Names;
    };
    [[nodiscard]] static Content Read(const QString& folder, bool orAbove);

    void Show(const QString& wanted, const Content& content);
    void OpenEntry(const QListWidgetItem* entry);

    Background background;
    QString open;
    QString upText = QStringLiteral("..");
    bool reading = false;
};
