#include "core/access_of.h"

#include "core/settings/settings.h"

ServerAccess AccessOf(const Settings& settings) {
    return {.Server = settings.Server,
            .Port = settings.Port,
            .User = settings.User,
            .Password = settings.PW,
            .Folder = settings.Verzeichnis,
            .DeleteFirst = settings.Delete,
            .Local = settings.LocalMode(),
            .DataFromAnywhere = settings.DataFromAnywhere};
}
