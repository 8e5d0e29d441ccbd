// The code page: text is Windows-1252 bytes on the wire, in files and in the heart, and Unicode on
// the screen. It changes here alone; only a set's file name is made in engine/cardset.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace packwise {

// Every byte has a character; the five that the code page leaves open become control characters.
QString fromBytes(std::string_view bytes);

// fromBytes() for what others have written: control characters, which a window might obey, become
// "?".
QString screenText(std::string_view bytes);

// Characters that the code page lacks become "?", one for each character.
std::string toBytes(const QString& text);

// Whether toBytes() keeps every character.
bool fitsCodePage(const QString& text);

}  // namespace packwise
