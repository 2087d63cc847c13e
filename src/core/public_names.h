#pragma once

#include <QString>

// The names of the pictures on the server and in the working folder.
namespace PublicNames {

inline const QString Picture = "pw.jpg";   // what the web page shows
inline const QString Sending = "1pw.jpg";  // while it is being sent
inline const QString Sent = "0pw.jpg";     // what was sent last, in the working folder
inline const QString Film = "film.mp4";    // of the day before, beside the picture
inline const QString Bitmap = "1pw.bmp";   // before it is encoded

// "pw1.jpg", "pw2.jpg" …: former pictures, the higher the older.
[[nodiscard]] inline QString History(int number) {
    return "pw" + QString::number(number) + ".jpg";
}

}  // namespace PublicNames
