# Sourced by the test scripts: the tests run with a new, empty home folder, as on a new
# user's machine, so that settings, file-dialog history or recovery copies left by earlier
# runs can never hide what a new user meets. The folder is removed when the script ends.
vx_fresh_home="$(mktemp -d "${TMPDIR:-/tmp}/vx-home.XXXXXX")"
trap 'rm -rf "$vx_fresh_home"' EXIT
export HOME="$vx_fresh_home"
export XDG_CONFIG_HOME="$HOME/.config"
export XDG_DATA_HOME="$HOME/.local/share"
export XDG_CACHE_HOME="$HOME/.cache"
export XDG_RUNTIME_DIR="$HOME/.runtime"
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
