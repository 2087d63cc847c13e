#include "ui/guide/camera_page.h"

#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "picture/picture_state.h"
#include "ui/settings/camera/camera_address.h"
#include "ui/settings/camera/camera_form.h"
#include "ui/settings/camera/camera_view.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/languages.h"
#include "ui/widgets/preview_area.h"

#include <QComboBox>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

namespace {

const QString testAddress = QStringLiteral("test:1280x720");

struct Tongue {
    QString Name;  // of itself
    QString Setting;
    Texts::Language Is;
};

const std::array tongues{
    Tongue{QStringLiteral("English"), QStringLiteral("english"), Texts::Language::English},
    Tongue{QStringLiteral("Deutsch"), QStringLiteral("deutsch"), Texts::Language::German},
    Tongue{QStringLiteral("Français"), QStringLiteral("franz"), Texts::Language::French}};

const Tongue& TongueAt(int index) {
    return tongues.at(static_cast<std::size_t>(qMax(0, index)));
}

}  // namespace

CameraPage::CameraPage(const SettingsWindow::Surroundings& surroundings, Languages& ownLanguages)
    : GuidePage(surroundings, "Camera"),
      cbLanguage(new QComboBox),
      cbCamera(new QComboBox),
      txtAddress(new QLineEdit),
      txtUser(new QLineEdit),
      txtPassword(new QLineEdit),
      btnTry(new QPushButton),
      View(new CameraView(surroundings.Core.ezVidCap1, surroundings.Words)),
      languages(ownLanguages),
      rows(new SettingsRows(Controls())) {
    for (const Tongue& tongue : tongues) cbLanguage->addItem(tongue.Name);
    txtPassword->setEchoMode(QLineEdit::Password);
    LayOut();
    connect(cbLanguage, &QComboBox::activated, this, &CameraPage::ApplyLanguage);
    connect(cbCamera, &QComboBox::activated, this, &CameraPage::Choose);
    connect(btnTry, &QPushButton::clicked, this, &CameraPage::Try);
    connect(txtAddress, &QLineEdit::editingFinished, this, &CameraPage::TakeAddressApart);
    // A camera that is plugged in meanwhile is in the list.
    connect(&Core(), &Program::DriversChanged, this, &CameraPage::ListCameras);
}

void CameraPage::LayOut() {
    rows->Add(cbLanguage,
              {.Key = "Sprache",
               .Text = "Language",
               .Show =
                   [this](const QString&) {
                       for (std::size_t i = 0; i < tongues.size(); ++i)
                           if (tongues.at(i).Is == Words().Current())
                               cbLanguage->setCurrentIndex(static_cast<int>(i));
                   },
               .Value = [this] { return TongueAt(cbLanguage->currentIndex()).Setting; }});
    rows->Add(cbCamera, {.Key = "Treiber",
                         .Text = "Camera",
                         .Show = [](const QString&) {},
                         .Value = [this] { return CameraName(); }});
    rows->Add(txtAddress, {.Text = "Address"});
    rows->Add(txtUser, {.Text = "CameraUser"});
    rows->Add(txtPassword, {.Text = "CameraPassword"});
    auto* attempt = new QHBoxLayout;
    attempt->addWidget(btnTry);
    attempt->addStretch(1);
    rows->AddWhole(attempt);
    Controls().Add(btnTry, {.Text = "Try"});
    Body().addLayout(rows);
    constexpr QSize least(192, 108);
    View->Area->setMinimumSize(least);
    Body().addWidget(View, 1);
}

QWidget* CameraPage::First() const {
    return cbCamera;
}

void CameraPage::ShowSettings() {
    line.clear();
    txtAddress->setText(QStringLiteral("rtsp://"));
    txtUser->clear();
    txtPassword->clear();
    Core().TryCamera({});
    cbCamera->setCurrentIndex(-1);
    ListCameras();
    if (cbCamera->currentIndex() < 0) {
        const int named = cbCamera->findText(Setting("Treiber"));
        const int first = Core().State.DriverPresent ? 0 : cbCamera->count() - 1;
        cbCamera->setCurrentIndex(named >= 0 ? named : qMax(first, Core().DriverIndex()));
    }
    GuidePage::ShowSettings();
    Choose();
}

// The program's list without the one that is only tried, then the two kinds of new ones.
void CameraPage::ListCameras() {
    const Kind kind = Chosen();
    const QString name = cbCamera->currentText();
    const bool any = cbCamera->currentIndex() >= 0;
    QStringList listed = Core().State.DriverPresent ? Core().DriverList() : QStringList();
    if (!line.isEmpty() && !listed.isEmpty()) listed.removeLast();
    // One that is only unplugged stays the one of the settings.
    const QString named = Setting("Treiber");
    if (!named.isEmpty() && !listed.contains(named)) listed << named;
    const QSignalBlocker quiet(cbCamera);
    cbCamera->clear();
    for (const QString& camera : std::as_const(listed))
        cbCamera->addItem(camera, static_cast<int>(Kind::Listed));
    cbCamera->addItem(Text("NetworkCamera"), static_cast<int>(Kind::Network));
    cbCamera->addItem(Text("TestPicture"), static_cast<int>(Kind::Test));
    if (any)
        cbCamera->setCurrentIndex(kind == Kind::Listed
                                      ? static_cast<int>(listed.indexOf(name))
                                      : cbCamera->findData(static_cast<int>(kind)));
    else
        cbCamera->setCurrentIndex(-1);
}

CameraPage::Kind CameraPage::Chosen() const {
    return static_cast<Kind>(cbCamera->currentData().toInt());
}

QString CameraPage::FreeName(const QString& name) const {
    const QStringList taken = Core().State.DriverPresent ? Core().DriverList() : QStringList();
    const QString own = line.section(u'|', 0, 0);
    QString free = name;
    for (int number = 2; free != own && taken.contains(free); ++number)
        free = name + u' ' + QString::number(number);
    return free;
}

WrittenCamera CameraPage::Written() const {
    if (Chosen() == Kind::Test)
        return {.Name = FreeName(Text("TestPicture")),
                .Address = testAddress,
                .Kind = CaptureKind::Test};
    const CameraAddress parts{txtAddress->text().trimmed(), txtUser->text(), txtPassword->text()};
    return {.Name = FreeName(Text("NetworkCamera")), .Address = parts.Joined()};
}

QString CameraPage::CameraName() const {
    return Chosen() == Kind::Listed ? cbCamera->currentText() : Written().Name;
}

void CameraPage::Choose() {
    lblNote->clear();
    ShowFields();
    if (Chosen() != Kind::Network) {
        Apply();
        return;
    }
    View->Begin(false);
    Core().ezVidCap1.SetPreview(false);
    line.clear();
}

void CameraPage::ApplyAgain() {
    ApplyLanguage();
    Apply();
}

void CameraPage::Apply() {
    const QString name = cbCamera->currentText();
    const bool listed = Chosen() == Kind::Listed;
    if (Chosen() == Kind::Network && line.isEmpty()) return;
    line = listed ? QString() : Written().Line();
    Core().TryCamera(line);
    if (listed) Core().SelectDriver(static_cast<int>(Core().DriverList().indexOf(name)));
    if (isVisible()) Look(true);
}

void CameraPage::ShowFields() {
    const bool network = Chosen() == Kind::Network;
    for (QLineEdit* field : {txtAddress, txtUser, txtPassword}) rows->ShowRow(field, network);
    btnTry->setVisible(network);
}

void CameraPage::ApplyLanguage() {
    switch (TongueAt(cbLanguage->currentIndex()).Is) {
        case Texts::Language::English:
            languages.ApplyEnglishTexts();
            break;
        case Texts::Language::German:
            languages.ApplyGermanTexts();
            break;
        case Texts::Language::French:
            languages.ApplyFrenchTexts();
            break;
    }
}

void CameraPage::ShowTexts(const QList<QAbstractButton*>& below) {
    GuidePage::ShowTexts(below);
    ListCameras();
}

void CameraPage::Look(bool waiting) {
    Core().ezVidCap1.SetPreview(waiting);
    View->Begin(waiting);
}

void CameraPage::TakeAddressApart() {
    const CameraAddress parts = CameraAddress::Split(txtAddress->text().trimmed());
    if (parts.User.isEmpty() && parts.Password.isEmpty()) return;
    txtAddress->setText(parts.Place);
    txtUser->setText(parts.User);
    txtPassword->setText(parts.Password);
}

void CameraPage::Try() {
    TakeAddressApart();
    lblNote->clear();
    const WrittenCamera camera = Written();
    if (const QString fault = camera.AddressFault(); !fault.isEmpty()) {
        Refuse(*txtAddress, Words().Get("CameraSources", fault));
        return;
    }
    line = camera.Line();
    Apply();
}

bool CameraPage::validatePage() {
    if (Chosen() != Kind::Network) return true;
    TakeAddressApart();
    if (!line.isEmpty() && line == Written().Line()) return true;
    Try();
    return false;
}

// A list that begins to be written goes on behind the cameras that are written down.
QList<ProfileEntry> CameraPage::Entries() const {
    QList<ProfileEntry> entries = GuidePage::Entries();
    if (Chosen() == Kind::Listed) return entries;
    const qsizetype count = ::LoadSettings(Core().SettingsFile()).Cameras.size();
    const auto key = [](qsizetype number) { return "Cam" + QString::number(number); };
    entries << ProfileEntry{"Cameras", key(count), Written().Line()}
            << ProfileEntry{"Cameras", key(count + 1), QString()};
    return entries;
}

void CameraPage::showEvent(QShowEvent* event) {
    GuidePage::showEvent(event);
    if (event->spontaneous()) return;
    Core().PictureValues.PreviewLock = true;  // a picture made meanwhile must not switch it back
    if (Chosen() != Kind::Network || !line.isEmpty()) Look(true);
}

void CameraPage::hideEvent(QHideEvent* event) {
    GuidePage::hideEvent(event);
    if (event->spontaneous()) return;
    Core().PictureValues.PreviewLock = false;
    Look(false);
    Core().ezVidCap1.SetPreview(Core().State.Values.Preview);
}
