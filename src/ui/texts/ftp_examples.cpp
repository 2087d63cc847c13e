#include "ui/texts/ftp_examples.h"

#include <QStringList>

namespace {

struct Replacement {
    QStringList From;
    QString To;
};

struct Replacements {
    Replacement Server;
    Replacement Path;
    Replacement User;
};

const QString englishServer = "ftp.your-server.example";
const QString germanServer = "ftp.ihr-server.example";
const QString frenchServer = "ftp.votre-serveur.example";
const QString englishPath = "Path/Path";
const QString germanPath = "Verzeichniss/Verzeichniss";
const QString frenchPath = "Liste/Liste";  // the one that the others know
const Replacement userName{{"Utilisateur-nom"}, "User-Name"};

Replacements Of(Texts::Language language) {
    using enum Texts::Language;
    if (language == German)
        return {{{englishServer, frenchServer}, germanServer},
                {{englishPath, frenchPath}, germanPath},
                userName};
    if (language == French)
        return {{{germanServer, englishServer}, frenchServer},
                {{englishPath, germanPath}, "Répertoire/Répertoire"},
                {{"User-Name"}, "UNom d'utilisateur"}};
    return {{{germanServer, frenchServer}, englishServer},
            {{germanPath, frenchPath}, englishPath},
            userName};
}

QString Replaced(const QString& field, const Replacement& replacement) {
    return replacement.From.contains(field) ? replacement.To : field;
}

}  // namespace

FtpExamples FtpExamplesOf(Texts::Language language) {
    const Replacements own = Of(language);
    return {own.Server.To, own.Path.To, own.User.To};
}

FtpExamples WithExamplesOf(Texts::Language language, const FtpExamples& fields) {
    const Replacements own = Of(language);
    return {Replaced(fields.Server, own.Server), Replaced(fields.Path, own.Path),
            Replaced(fields.User, own.User)};
}
