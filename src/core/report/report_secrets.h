#pragma once

#include <QByteArray>
#include <QStringList>

// What must not stand in a report that strangers read.
class ReportSecrets {
  public:
    // Those that stand in a settings file: the values of secret keys, and the passwords in
    // addresses. Any bytes.
    explicit ReportSecrets(const QByteArray& settingsFile);

    // The line with "***" in their place, wherever they stand, and in that of what addresses have
    // in front of the host and behind '?'.
    [[nodiscard]] QString Without(const QString& line) const;

    // The settings of the file as it has them, without secrets and without what is no setting of
    // this program.
    [[nodiscard]] static QStringList SettingsOf(const QByteArray& settingsFile);

    // The line with "~" in the place of this user's home folder, and of other users' names in
    // paths.
    [[nodiscard]] static QString WithoutNames(const QString& line, const QString& home);

  private:
    void Add(const QString& secret);
    void AddFrom(const QString& address);

    QStringList words;  // longer ones first
};
