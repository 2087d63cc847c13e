#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// Finds skins and their files. A skin is a folder below "Skins" in one of several places: the
// program folder first, then the installed copies. Names are matched without regard to case.
class SkinFolders {
  public:
    // The skin that is always there, and that holds the pictures all skins share.
    static inline const QString Default = QStringLiteral("Default");

    // places: full paths of folders that may hold a folder "Skins", the one that counts most first.
    explicit SkinFolders(const QStringList& ownPlaces) : places(ownPlaces) {}

    // All skins, each once, sorted by name; hidden ones (with a full stop in front) left out.
    [[nodiscard]] QStringList Names() const;

    // The skin that a setting asks for, spelled as its folder is: `wanted` when there is such a
    // folder, "Default" otherwise. Only the folder is looked for, not what is in it.
    [[nodiscard]] QString Choose(const QString& wanted) const;
    [[nodiscard]] bool Has(const QString& name) const { return !Folder(name).isEmpty(); }

    // The full path of a skin's file; empty when there is none.
    [[nodiscard]] QString Find(const QString& name, const QString& file) const;
    // What is in it. None: there is none; empty: it cannot be read, or is no part of a skin.
    [[nodiscard]] std::optional<QByteArray> Read(const QString& name, const QString& file) const;

  private:
    [[nodiscard]] QString Folder(const QString& name) const;

    QStringList places;
};
