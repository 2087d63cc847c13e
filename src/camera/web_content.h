#pragma once

#include <QByteArray>

// Tells from the content of an answer, while it comes, whether it is a picture, and where that
// ends.
class WebContent {
  public:
    enum class Kind {
        Unknown,  // more of it has to come
        Picture,  // begins like one
        Stream,   // something else, which may go on for ever
        Neither,  // a page of text
    };
    // What is told in front of it. The type is wrong as often as not.
    QByteArray Type;
    bool HasLength = false;

    // quiet: nothing has come for so long that a picture may be over.
    void Take(const QByteArray& more, bool quiet);
    // Whether no more of it is needed.
    [[nodiscard]] bool Decided() const {
        return Complete || (Is != Kind::Unknown && Is != Kind::Picture);
    }

    Kind Is = Kind::Unknown;
    QByteArray Bytes;       // all that came, of several pictures the first
    bool Complete = false;  // though the line may go on

  private:
    void LookForTheEnd(qsizetype known, bool quiet);
};
