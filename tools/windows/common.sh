# Sourced by the scripts of this folder, with the project's folder as the current one.

here=$PWD/tools/windows
# Everything that is built lies in there: sources, Qt, the libraries, Packwise.
build=${PACKWISE_WINDOWS_BUILD:-$PWD/build/windows}
mkdir -p "$build"
build=$(cd "$build" && pwd)
sources=$build/sources
qt=$build/qt
libraries=$build/libraries

cross=(
    -G Ninja
    -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake"
    -DCMAKE_BUILD_TYPE=Release
)
# The tools of the machine's own Qt, which has to be of the same version.
host_qt=(-DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake)

# Fetches the source archive of a Debian package, unless it lies in $sources already. The machine's
# own package lists may name binaries alone, so copies of them are asked. A mirror can have lost a
# file of an older release; then the next release's version is taken.
fetch_source() {
    local package=$1 suite list
    mkdir -p "$sources"
    compgen -G "$sources/${package}_*.orig.tar.*" >/dev/null && return
    for suite in bookworm trixie; do
        local apt=$sources/apt-$suite
        mkdir -p "$apt/parts" "$apt/lists/partial" "$apt/cache/archives/partial"
        for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
            [ -f "$list" ] || continue
            sed -e 's/^Types:.*/Types: deb-src/' -e 's/^deb /deb-src /' -e "s/bookworm/$suite/g" \
                "$list" >"$apt/parts/$(basename "$list")"
        done
        [ ! -f "$apt/parts/sources.list" ] || mv "$apt/parts/sources.list" "$apt/parts/main.list"
        local options=(-qq -o Dir::Etc::sourceparts="$apt/parts" -o Dir::Etc::sourcelist=/dev/null
            -o Dir::State::lists="$apt/lists" -o Dir::Cache="$apt/cache" -o APT::Sandbox::User=root)
        apt-get "${options[@]}" update
        (cd "$sources" && apt-get "${options[@]}" source --download-only --tar-only "$package") &&
            return
    done
    echo "The source of $package cannot be fetched." >&2
    return 1
}

# Unpacks the source archive of a Debian package into a folder.
unpack_source() {
    fetch_source "$1"
    rm -rf "$2"
    mkdir -p "$2"
    tar -xf "$(compgen -G "$sources/$1_*.orig.tar.*" | grep -v '\.asc$' | sort -V | tail -1)" \
        -C "$2" --strip-components=1
}

# Builds a CMake build folder and shows how far it is: on a terminal by Ninja's own line, else by a
# line for every twentieth part.
build_shown() {
    if [ -t 1 ]; then
        NINJA_STATUS='[%f/%t, %w] ' cmake --build "$@"
    else
        local line part told=0 failed=
        cmake --build "$@" | while IFS= read -r line; do
            if [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]]; then
                part=$((20 * BASH_REMATCH[1] / BASH_REMATCH[2]))
                [ $part -le $told ] || echo "  $((5 * part)) %"
                told=$part failed=
            elif [[ $line == FAILED* || -n $failed ]]; then
                failed=yes
                echo "$line"
            fi
        done
    fi
}
