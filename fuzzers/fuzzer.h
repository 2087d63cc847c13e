#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <functional>

// What is done with any bytes, and what must be true of it whatever they are. One in each file; in
// corpus a folder of the same name has its inputs.
class Fuzzer {
  public:
    using Routine = void (*)(const QByteArray& bytes);

    // Finds itself by that name from then on.
    Fuzzer(const char* ownName, Routine ownRun);

    // Null: there is none.
    [[nodiscard]] static const Fuzzer* Named(const QByteArray& name);
    // Of a program that has but one.
    [[nodiscard]] static const Fuzzer& Only();

    void Run(const QByteArray& bytes) const { run(bytes); }

  private:
    const char* name;
    Routine run;
};

// Ends the program with a message where the condition does not hold.
#define MUST(condition) ((condition) ? void() : Failed(#condition, __FILE__, __LINE__))
[[noreturn]] void Failed(const char* condition, const char* file, int line);

// Several texts in one input: those that lines of "%%" part. As many as are asked for; what is
// missing is empty, the last has all that is left.
[[nodiscard]] QByteArrayList Parts(const QByteArray& bytes, int count);

// Hands the bytes on as a network does, in pieces of any length.
void InPieces(const QByteArray& bytes, const std::function<void(const QByteArray&)>& take);
