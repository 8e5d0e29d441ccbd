#include "sets/nearest.h"

#include "platform/codepage.h"

#include <QList>
#include <QStringDecoder>

#include <algorithm>
#include <utility>

namespace packwise::sets {

namespace {

constexpr std::pair<char32_t, const char*> kByHand[] = {
    {U'\u2212', "-"},        {U'\u2010', "-"},   {U'\u2011', "-"},  {U'\u2012', "-"},
    {U'\u2015', "\x97"},     {U'\u2032', "'"},   {U'\u2033', "\""}, {U'\u201B', "'"},
    {U'\u221E', "infinity"}, {U'\u03C0', "pi"},  {U'\u03A3', "E"},  {U'\u2605', "*"},
    {U'\u2606', "*"},        {U'\u2610', "[ ]"}, {U'\u2215', "/"},  {U'\u2044', "/"},
    {U'\u00AD', ""},         {U'\u200B', ""},    {U'\uFEFF', ""},   {U'\u2192', "->"},
    {U'\u2190', "<-"},       {U'\u2264', "<="},  {U'\u2265', ">="}, {U'\u0131', "i"},
    {U'\u0142', "l"},        {U'\u0141', "L"},   {U'\u0111', "d"},  {U'\u0110', "D"},
    {U'\u0127', "h"},        {U'\u0126', "H"},   {U'\u0167', "t"},  {U'\u0166', "T"},
    {U'\u014B', "n"},        {U'\u014A', "N"},
};

// The letters under the accents, or the plain form of a fancy one. Empty when there is none.
std::string plainForm(const QString& character) {
    std::string plain;
    for (const QChar part : character.normalized(QString::NormalizationForm_KD)) {
        if (part.isMark()) {
            continue;
        }
        if (!fitsCodePage(QString(part))) {
            return {};
        }
        plain += toBytes(QString(part));
    }
    return plain;
}

}  // namespace

int lineOutsideUtf8(const QByteArray& bytes) {
    int number = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        ++number;
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        [[maybe_unused]] const QString text = decoder(line);
        if (decoder.hasError()) {
            return number;
        }
    }
    return 0;
}

std::string Nearest::bytes(std::string_view utf8) {
    return bytes(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

std::string Nearest::bytes(const QString& text) {
    if (fitsCodePage(text)) {
        return toBytes(text);
    }
    std::string result;
    for (const char32_t character : text.normalized(QString::NormalizationForm_C).toUcs4()) {
        const QString one = QString::fromUcs4(&character, 1);
        result += fitsCodePage(one) ? toBytes(one) : replacement(character);
    }
    return result;
}

std::string Nearest::replacement(char32_t character) {
    const auto [kind, isNew] = kinds_.try_emplace(character);
    if (isNew) {
        const auto* const byHand =
            std::find_if(std::begin(kByHand), std::end(kByHand),
                         [character](const auto& row) { return row.first == character; });
        const QString one = QString::fromUcs4(&character, 1);
        const std::string plain = plainForm(one);
        kind->second.by = byHand != std::end(kByHand) ? std::string(byHand->second)
                          : !plain.empty()            ? plain
                          : one.front().isMark()      ? std::string()
                                                      : std::string("?");
    }
    ++kind->second.times;
    return kind->second.by;
}

std::vector<Fault> Nearest::warnings() const {
    std::vector<Fault> faults;
    for (const auto& [character, kind] : kinds_) {
        const QString number = QString::number(static_cast<uint>(character), 16).toUpper();
        faults.push_back({"the character U+" + number.rightJustified(4, u'0').toStdString() +
                              " is not in Windows-1252 and becomes \"" + kind.by + "\", " +
                              std::to_string(kind.times) + (kind.times == 1 ? " time" : " times"),
                          {},
                          true});
    }
    return faults;
}

}  // namespace packwise::sets
