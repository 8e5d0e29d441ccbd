// Text in Windows-1252, with the nearest there is for what the code page lacks.
#pragma once

#include "sets/setsource.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace packwise::sets {

// The first line, from 1, that is not UTF-8; 0 when all are.
int lineOutsideUtf8(const QByteArray& bytes);

class Nearest {
public:
    std::string bytes(const QString& text);
    std::string bytes(std::string_view utf8);

    // One for each kind of character that was replaced, and how often.
    std::vector<Fault> warnings() const;

private:
    std::string replacement(char32_t character);

    struct Kind {
        std::string by;
        int times = 0;
    };
    std::map<char32_t, Kind> kinds_;
};

}  // namespace packwise::sets
