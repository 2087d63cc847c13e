#include "ui/settings/ftp/way_fields.h"

#include "ui/settings/settings_rows.h"
#include "ui/widgets/file_chooser.h"

#include <QFileInfo>

#include <utility>

namespace {

constexpr int ways = static_cast<int>(Protocol::Unknown);

}  // namespace

WayFields::WayFields(Bindings& ownBindings, SettingsRows& ownRows, std::function<bool()> ownLocal)
    : QObject(&ownRows), bindings(ownBindings), rows(ownRows), local(std::move(ownLocal)) {
    connect(cbProtocol, &QComboBox::currentIndexChanged, this, &WayFields::Note);
    connect(chkPassive, &QCheckBox::toggled, this, &WayFields::Edited);
    connect(btnKeyFile, &QPushButton::clicked, this, &WayFields::ChooseKeyFile);
    for (const QLineEdit* field : {txtKeyFile, txtBucket, txtRegion, txtTrusted})
        connect(field, &QLineEdit::textChanged, this, &WayFields::Edited);
}

void WayFields::AddChoice() {
    rows.Add(cbProtocol, {.Key = "Protocol",
                          .Text = "Way",
                          .Items = ways,
                          .Enabled = [this] { return !local(); },
                          .Show = [this](const QString& setting) { Choose(setting); },
                          .Value = [this] { return Setting(); }});
}

void WayFields::AddFields() {
    rows.Add(txtBucket, "Bucket");
    rows.Add(txtRegion, "Region");
    rows.Add(txtKeyFile, {.Key = "KeyFile"}, btnKeyFile);
    bindings.Add(btnKeyFile, {.Text = "ChooseKeyFile"});
    rows.Add(chkPassive, "Passive");
    rows.Add(txtCacheSeconds, "CacheSeconds");
    rows.Add(txtTrusted, "Trusted");
    ShowFields();
}

Protocol WayFields::Way() const {
    const int index = cbProtocol->currentIndex();
    return index < 0 ? Protocol::Unknown : static_cast<Protocol>(index);
}

QString WayFields::Setting() const {
    return Way() == Protocol::Unknown ? unknown : SettingOf(Way());
}

void WayFields::Choose(const QString& setting) {
    const Protocol way = ProtocolOf(setting);
    unknown = way == Protocol::Unknown ? setting : QString();
    cbProtocol->setCurrentIndex(way == Protocol::Unknown ? -1 : static_cast<int>(way));
}

void WayFields::Note() {
    const Protocol former = std::exchange(shown, Way());
    if (former == shown) return;
    ShowFields();
    emit WayChanged(former);
    emit Edited();
}

void WayFields::ShowFields() {
    using enum Protocol;
    const Protocol way = local() ? Unknown : Way();
    const bool web = way == Https || way == S3;
    rows.ShowRow(cbProtocol, !local());
    rows.ShowRow(chkPassive, SpeaksFtp(way));
    rows.ShowRow(txtKeyFile, way == Sftp);
    rows.ShowRow(txtBucket, way == S3);
    rows.ShowRow(txtRegion, way == S3);
    rows.ShowRow(txtCacheSeconds, web);
    rows.ShowRow(txtTrusted, IsEncrypted(way) || web);
}

void WayFields::Fill(ServerAccess& access) const {
    access.Way = Way();
    access.Passive = chkPassive->isChecked();
    access.KeyFile = txtKeyFile->text().trimmed();
    access.Bucket = txtBucket->text().trimmed();
    access.Region = txtRegion->text().trimmed();
    access.Trusted = txtTrusted->text().trimmed();
}

QLineEdit* WayFields::FieldOf(ServerFault fault) const {
    switch (fault) {
        case ServerFault::BucketMissing:
            return txtBucket;
        case ServerFault::WrongRegion:
            return txtRegion;
        case ServerFault::KeyNotUsable:
            return txtKeyFile;
        case ServerFault::CertificateChanged:
        case ServerFault::HostKeyChanged:
            return txtTrusted;
        default:
            return nullptr;
    }
}

void WayFields::ChooseKeyFile() {
    const QString begin = QFileInfo(txtKeyFile->text()).path();
    auto& chooser = OpenFileChooser(btnKeyFile->window(), QFileDialog::ExistingFile,
                                    bindings.Text("ChooseKeyFile"), begin);
    connect(&chooser, &QFileDialog::fileSelected, txtKeyFile, &QLineEdit::setText);
}
