// Reads a cube: a list of different cards, one a line, all dealt alike.
#pragma once

#include "sets/mtgjson.h"
#include "sets/textsource.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <set>
#include <vector>

namespace packwise::sets {

// The details of cards by the names that a list may call them by.
class CardDetails {
public:
    // Whether a face belongs to one of these names, in any spelling that find() accepts.
    void want(const QStringList& names);
    bool wants(const MtgFace& face) const;

    // Takes the cards of a set; the first to come is kept.
    void take(const MtgSet& set);

    // The faces of the card of that name, front first; empty when no set had it.
    std::vector<MtgFace> find(const QString& name) const;

private:
    std::set<QString> wanted_;
    std::map<QString, std::vector<MtgFace>> cards_;
};

struct CubeLine {
    QString name;    // without the count
    QString whole;   // with it, for a name that begins with a number
    int number = 0;  // of the line, from 1
};

// The cards of a list.
std::vector<CubeLine> cubeLines(const QByteArray& utf8);

// A pack holds 15 different cards: the cards lie in the three pools in turn, five from each.
// Without details every card is of the artifacts' colour and has no text.
ReadSource readCube(const QByteArray& utf8, const QString& displayName, const CardDetails* details);

}  // namespace packwise::sets
