# Sourced by tools/windows/check: plays Packwise as a person does, by the mouse and the keys. Each
# function takes the display on which the program shows its windows. Places are in pixels within a
# window.

# The window of that title, once it is there.
window() {
    local found=
    for _ in $(seq 300); do
        found=$(DISPLAY=$1 xdotool search --onlyvisible --name "^$2\$" 2>/dev/null | tail -1) || true
        [ -z "$found" ] || { echo "$found"; return; }
        sleep 0.1
    done
    echo "no window \"$2\" on $1" >&2
    return 1
}

# Whether it is there now.
has_window() {
    DISPLAY=$1 xdotool search --onlyvisible --name "^$2\$" >/dev/null 2>&1
}

click() { # display window x y [times]
    DISPLAY=$1 xdotool mousemove --window "$2" "$3" "$4" click --repeat "${5:-1}" --delay 60 1
    sleep 0.3
}

keys() { # display key...
    DISPLAY=$1 xdotool key --delay 60 "${@:2}"
    sleep 0.3
}

type_over() { # display text
    keys "$1" ctrl+a
    DISPLAY=$1 xdotool type --delay 30 "$2"
    sleep 0.3
}

picture() { # display file
    DISPLAY=$1 import -window root "$2"
}

# From the start window to a console that listens: three packs of the first set.
host_draft() { # display name port
    local console
    window "$1" 'Packwise 1\.41' >/dev/null
    sleep 1
    DISPLAY=$1 xdotool windowactivate --sync "$(window "$1" 'Packwise 1\.41')"
    picture "$1" "$pictures/$2-start.png"
    keys "$1" alt+s
    console=$(window "$1" 'Packwise Server')
    sleep 1
    for row in 262 290 318; do
        click "$1" "$console" 173 $row
        keys "$1" Down Return
    done
    click "$1" "$console" 60 25
    type_over "$1" "$3"
    click "$1" "$console" 181 59
    type_over "$1" "$2"
    click "$1" "$console" 161 25
    window "$1" 'Packwise Client' >/dev/null
}

start_draft() { # display
    click "$1" "$(window "$1" 'Packwise Server')" 457 397
}

join_draft() { # display name port
    DISPLAY=$1 xdotool windowactivate --sync "$(window "$1" 'Packwise 1\.41')"
    keys "$1" alt+c
    window "$1" 'Client Connection' >/dev/null
    sleep 1
    type_over "$1" "$2"
    keys "$1" Tab
    type_over "$1" 127.0.0.1
    keys "$1" Tab
    type_over "$1" "$3"
    picture "$1" "$pictures/$2-connect.png"
    keys "$1" alt+c
    window "$1" 'Packwise Client' >/dev/null
}

# Takes the first card of each pack until there is a deck to build.
pick_all() { # display
    local client
    for _ in $(seq 600); do
        ! has_window "$1" 'Build Deck' || return 0
        client=$(window "$1" 'Packwise Client') || return 1
        click "$1" "$client" 128 47 2 2>/dev/null || true
    done
    return 1
}

# Puts all picks into the deck and saves it in the program's folder.
save_deck() { # display name
    local builder
    builder=$(window "$1" 'Build Deck')
    sleep 1
    click "$1" "$builder" 60 60
    keys "$1" ctrl+a
    click "$1" "$builder" 212 143
    picture "$1" "$pictures/$2-deck.png"
    keys "$1" alt+a
    window "$1" 'Save As' >/dev/null
    sleep 1
    type_over "$1" "$2.dec"
    picture "$1" "$pictures/$2-save.png"
    keys "$1" alt+o
    sleep 2
    picture "$1" "$pictures/$2-end.png"
}
