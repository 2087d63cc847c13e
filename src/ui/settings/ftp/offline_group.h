#pragma once

#include "texts/texts.h"
#include "ui/settings/ftp/offline_list.h"
#include "ui/widgets/preview_area.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSize>

#include <functional>

class Bindings;

// Which picture is published when publishing stops, with a look at it. A picture from elsewhere can
// be added; it is copied into the program's folder when the settings are saved.
class OfflineGroup : public QGroupBox {
    Q_OBJECT

  public:
    // bindings: of the window. places: where the folder "Offline" is looked for, the program folder
    // first. cameraSize: of the camera's last picture, empty before the first one.
    OfflineGroup(Bindings& bindings, const Texts& ownWords, std::function<QStringList()> ownPlaces,
                 std::function<QSize()> ownCameraSize);

    QCheckBox* chkOfflinePic = new QCheckBox;
    QCheckBox* chkFilter = new QCheckBox;
    QComboBox* cbOffline = new QComboBox;
    QPushButton* btnAddOffline = new QPushButton;
    QLineEdit* txtOfflinePath = new QLineEdit;  // the folder that the pictures are in
    PreviewArea* preview = new PreviewArea;
    QLabel* lblOfflineSize = new QLabel;

    [[nodiscard]] QString File() const;  // name of the picture chosen
    [[nodiscard]] int Index() const;     // its place in the list
    // Whether the picture chosen can be published.
    [[nodiscard]] bool Usable() const { return !pictureSize.isEmpty(); }
    // Whether there is a folder to choose from.
    [[nodiscard]] bool FolderExists() const;
    // Whether the filter would be used on a picture smaller than the camera's.
    [[nodiscard]] bool TooSmall() const;

    // Puts a picture of this computer into the list and chooses it.
    void Add(const QString& path);
    // Copies the picture that was added and is chosen into the folder. False when it cannot.
    [[nodiscard]] bool CopyAdded();

  signals:
    // The operator has chosen a picture, or the filter, for which it is too small.
    void FoundTooSmall();

  private:
    void LayOut(Bindings& bindings);
    void List(const QString& chosen);
    void ShowPicture();
    void ShowSizes();
    void ChooseFile();
    void Warn();
    [[nodiscard]] QString Text(const QString& key) const { return words.Get("frmFTP", key); }

    const Texts& words;
    std::function<QStringList()> places;
    std::function<QSize()> cameraSize;
    QList<OfflineEntry> entries;
    QList<OfflineEntry> added;  // under the names that they will have
    QSize pictureSize;          // empty: missing or no picture
    bool found = false;
};
