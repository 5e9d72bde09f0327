# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# Sourced: a device with a catalogue, and a server that has the archive of one of its regions.

# make_device FOLDER: from here on, programs work on the device there.
make_device() {
    local folder=$1
    rm -rf "$folder"
    mkdir -p "$folder/cities/Tessarin" "$folder/config" "$folder/map5" "$folder/tiles/a/3"
    cat > "$folder/cities/Tessarin/catalog-26.11.21.00.xml" <<'XML'
<Catalog Version="26.11.21.00">
<File Id="UN150" Description="Europe" ZipFileSize="3000000" Link="E.zip">
<File Id="FI" Description="Finland" ZipFileSize="2000000" Link="FI.zip"/>
<File Id="SE" Description="Sweden" ZipFileSize="1000000" Link="SE.zip"/>
</File></Catalog>
XML
    echo '<directory map-version="26.11.21.00"><diskcache/><regions/></directory>' \
        > "$folder/cities/Tessarin/content.xml"
    echo 26.11.21.00 > "$folder/map5/version.txt"
    echo tile > "$folder/tiles/a/3/n60e024.cdt"
    (cd "$folder/tiles" && zip -qr "$folder/map5/FI.zip" a)
    export VEXA_MYDOCS=$folder HOME=$folder/home XDG_CONFIG_HOME=$folder/config
}

# serve_device FOLDER: sets $base_uri; the server lives as long as this script, and is in the
# settings of the device.
serve_device() {
    coproc SERVER { exec "$here/../../tools/content/serve" "$1"; }
    server=$SERVER_PID # bash forgets its own when the server has ended
    trap 'kill "$server" && wait "$server" || true' EXIT
    read -r -t 60 base_uri <&"${SERVER[0]}" || fail "the server does not start"
    point_device "$1"
}

# point_device FOLDER: the server that runs already gets into the settings of this device, too.
point_device() {
    mkdir -p "$1/config/Orvel"
    printf '[vexa]\nvexaBaseURI=%s\n' "$base_uri" > "$1/config/Orvel/Maps.conf"
}

# check_install_region PROGRAM [LIBRARY_FOLDER]: examples/cpp lists the regions, installs one, and
# says what failed.
check_install_region() {
    local program=$1 said
    local -x LD_LIBRARY_PATH=${2:-}
    said=$("$program") || fail "$program cannot list the regions"
    [ "$said" = $'- Finland (FI)\n- Sweden (SE)\n- Europe (UN150)' ] || fail "it lists: $said"
    said=$("$program" "$base_uri" FI) || fail "$program cannot install FI"
    [[ $said == *$'* Finland (FI)\n- Sweden (SE)\n- Europe (UN150)' ]] || fail "it said: $said"
    [ "$(cat "$VEXA_MYDOCS/cities/diskcache/a/3/n60e024.cdt")" = tile ] || fail "there is no tile"
    grep -q '<region id="1FI"' "$VEXA_MYDOCS/cities/Tessarin/content.xml" \
        || fail "the region is not recorded"
    ! said=$("$program" "$base_uri" SE 2>&1) || fail "a missing archive is installed"
    [[ $said == *"SE: step 2 failed with code 1"* ]] || fail "of a missing archive it said: $said"
    ! said=$("$program" "$base_uri" XX 2>&1) || fail "an unknown region is installed"
    [[ $said == *"There is no region XX."* ]] || fail "of an unknown region it said: $said"
}
