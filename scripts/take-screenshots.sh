#!/usr/bin/env bash
# Takes the screenshots that the AppStream metainfo names, on a private X server, with pxmenu
# installed (the packages, or `cmake --install` into /usr): the context menu of GNOME Files on a
# sample folder (docs/screenshots/menu.png) and the settings window
# (docs/screenshots/settings.png). They are published where PX_SCREENSHOT_URL says.
#   scripts/take-screenshots.sh [DISPLAY_NUMBER]        (default 94)
set -euo pipefail
cd "$(dirname "$0")/.."
out=$PWD/docs/screenshots
display=:${1:-94}
mkdir -p "$out"

if [ -z "${PX_SCREENSHOT_SESSION:-}" ]; then
    Xvfb "$display" -screen 0 1024x700x24 -nolisten tcp >/dev/null 2>&1 &
    xvfb=$!
    trap 'kill "$xvfb"' EXIT
    sleep 2
    PX_SCREENSHOT_SESSION=1 DISPLAY=$display dbus-run-session -- "$0" "$@"
    exit
fi

export GDK_BACKEND=x11 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory LANG=C.UTF-8
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home/.config XDG_DATA_HOME=$home/.local/share
folder=$home/Documents
mkdir -p "$folder/Projects"
printf 'Shopping list\n' >"$folder/notes.txt"
convert -size 640x480 plasma:steelblue-white "$folder/holiday.png"
pxmenu setup
pxmenu config set right "Convert to" disabled false
# No compositor runs here: without their shadows, menus draw no black frame.
mkdir -p "$XDG_CONFIG_HOME/gtk-4.0" "$XDG_CONFIG_HOME/gtk-3.0"
printf 'popover > contents, menu, .csd.popup decoration { box-shadow: none; border-radius: 0; }\n' |
    tee "$XDG_CONFIG_HOME/gtk-4.0/gtk.css" >"$XDG_CONFIG_HOME/gtk-3.0/gtk.css"

# The largest visible window of a program, placed at the top left.
window_of() {
    local id
    for _ in $(seq 30); do
        id=$(xdotool search --onlyvisible --class "$1" 2>/dev/null | tail -1) && [ -n "$id" ] && break
        sleep 1
    done
    [ -n "$id" ] || { echo "no window of $1" >&2; return 1; }
    xdotool windowsize "$id" 900 620 windowmove "$id" 0 0
    sleep 2
    echo "$id"
}

nautilus --new-window "$folder" >/dev/null 2>&1 &
files=$!
window_of nautilus >/dev/null
sleep 4
# The second item of the grid (holiday.png, after the folder): a right-click opens the menu.
xdotool mousemove 490 130 click 1 sleep 1 click 3
sleep 2
import -window root -crop 900x620+0+0 +repage "$out/menu.png"
xdotool key Escape
kill "$files"

if command -v pxmenu-settings >/dev/null; then
    pxmenu-settings >/dev/null 2>&1 &
    settings=$!
    id=$(window_of pxmenu-settings)
    import -window "$id" "$out/settings.png"
    kill "$settings"
else
    echo "pxmenu-settings is not installed: no settings.png" >&2
fi
ls -l "$out"
