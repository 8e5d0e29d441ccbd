// What a program without windows may ask of its terminal.
#pragma once

#include <QIODevice>

#include <cstdio>

namespace packwise {

// Whether the standard output goes to a terminal, not to a file or a pipe.
bool writesToTerminal();

// The same of the standard error.
bool reportsToTerminal();

// Lets a program with windows answer on the terminal that it was started from. Windows does not
// give it that one; elsewhere there is nothing to do.
void joinTerminal();

// For the start of a program that serves on when nobody reads its words any more: a standard stream
// that is closed becomes the null device, so that no connection gets its number, and a reader who
// has gone ends nothing.
void keepStandardStreams();

// The text as a terminal may show it: what would act on the terminal stands as "?". Line ends and
// tabs stay.
QString printable(QString text);

// A standard stream that takes UTF-8 from a QTextStream and is never behind.
class StandardStream : public QIODevice {
public:
    explicit StandardStream(std::FILE* file);

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override;

private:
    std::FILE* file_;
};

// The same for words that may come from strangers: all of it is made printable.
class PrintableStream : public StandardStream {
public:
    using StandardStream::StandardStream;

protected:
    qint64 writeData(const char* data, qint64 size) override;
};

}  // namespace packwise
