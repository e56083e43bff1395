#!/usr/bin/env bash
# Installs what is missing, builds and starts the application with its sample data.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
bash "$here/scripts/build.sh"
exec "${BUILD_DIR:-$here/build}/bin/vxhost" "$@"
