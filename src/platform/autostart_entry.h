#pragma once

#include <QString>
#include <QStringList>

// The program's place in the list of what the system starts when this user logs in. There is at
// most one.
class AutostartEntry {
  public:
    virtual ~AutostartEntry() = default;

    // Has the system start `program` (a full path) with these arguments, in place of what the
    // entry said before. False when it cannot be written; the old entry then stays.
    [[nodiscard]] virtual bool Write(const QString& program, const QStringList& arguments) = 0;

    // Takes the entry away; one that is not there is no fault.
    [[nodiscard]] virtual bool Remove() = 0;

    // Where the entry is, for people who look for it.
    [[nodiscard]] virtual QString Place() const = 0;
};
