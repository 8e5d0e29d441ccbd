// What the deck builder needs of the draft client and of the card popup.
#pragma once

#include "engine/picktext.h"

#include <QString>
#include <QStringList>

#include <string_view>

namespace packwise {

class DeckLink {
public:
    virtual ~DeckLink() = default;

    // Writes a whole message to the server; dropped when there is no connection.
    virtual void send(std::string_view message) = 0;

    // Shows a card's details at that place, in twips. `sets` are the draft's six set names.
    virtual void showCard(const QString& name, const QStringList& sets, int left, int top) = 0;
    virtual void hideCard() = 0;

    // What the player saw of the draft.
    virtual PickLog picks() const = 0;

    // Tells the player where the deck lies, and of a file to go with it why it could not be
    // written.
    virtual void deckSaved(const QString& path) = 0;
    virtual void notSaved(const QString& path, const QString& reason) = 0;
};

}  // namespace packwise
