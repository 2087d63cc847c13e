#include "ui/settings/remedy.h"

#include "texts/texts.h"

#include <algorithm>
#include <array>

namespace {

struct Row {
    TroubleKind Kind;
    Remedy::Window In;
    const char* Field;
    const char* Text;
};

using enum Remedy::Window;

constexpr std::array rows{
    Row{TroubleKind::Camera, Camera, "Treiber", "Camera"},
    Row{TroubleKind::Server, Ftp, "Server", "Server"},
    Row{TroubleKind::Identity, Ftp, "Trial", "Identity"},
    Row{TroubleKind::Login, Ftp, "PW", "Login"},
    Row{TroubleKind::Folder, Ftp, "Verzeichnis", "Folder"},
    // The trial finds out what it is.
    Row{TroubleKind::Transfer, Ftp, "Trial", "Transfer"},
    Row{TroubleKind::LocalFolder, Ftp, "Verzeichnis", "LocalFolder"},
    Row{TroubleKind::WorkFolder, Camera, "Path", "WorkFolder"},
};

}  // namespace

std::optional<Remedy> Remedy::For(const std::optional<::Trouble>& trouble, const Texts& texts) {
    if (!trouble) return std::nullopt;
    const auto* row = std::ranges::find(rows, trouble->Kind, &Row::Kind);
    if (row == rows.end()) return std::nullopt;
    const auto text = [&texts](const char* key) {
        return texts.Get("Remedies", QString::fromLatin1(key));
    };
    return Remedy{row->In, QString::fromLatin1(row->Field), text(row->Text),
                  text(row->In == Ftp ? "OpenFtp" : "OpenCamera")};
}
