#!/usr/bin/env bash
# Installs every Debian package the build, the application and the tests need.
# Both README commands run it; it only calls apt-get when something is missing.
set -euo pipefail

PACKAGES=(
    cmake
    g++
    make
    pkg-config
    qtbase5-dev
    qtbase5-dev-tools
    qttools5-dev            # Qt5LinguistTools CMake package (translations)
    qttools5-dev-tools      # lupdate and lrelease
    libqt5svg5-dev
    qt5-image-formats-plugins
    fonts-dejavu-core
    # DICOM (exporter and image file reader) and the zlib stream inside EPS.
    libdcmtk-dev
    zlib1g-dev
    # TIFF export: compression, resolution and metadata tags.
    libtiff-dev
    # Layout files: zip archives of PNG images.
    libzip-dev
    libpng-dev
    libtiff-dev             # quietens libtiff under Qt's TIFF reader
    # Independent readers that check what we write: each export format, printed PDF pages.
    dcmtk
    dicom3tools
    emf2svg
    ghostscript
    libimage-exiftool-perl  # exiftool: provenance text in PNG, TIFF and JPEG
    libtiff-tools
    libxml2-utils           # xmllint: the XMP packets written into PNG, TIFF and JPEG
    librsvg2-bin
    libwmf-bin
    poppler-utils
    # Independent readers of layout files: zipinfo and unzip, Python's JSON parser, pngcheck.
    unzip
    python3
    pngcheck
    libimage-exiftool-perl  # exiftool: the resolution vxlayout writes into raster files
    qpdf                    # uncompresses PDF pages, to read the resolution they are described at
    stress-ng               # scripts/test-under-load.sh keeps the cores busy while the tests run
    # The benchmarks in bench/ time libvips and ImageMagick beside vxlayout and the window.
    libvips-tools
    imagemagick
    # Desktop integration: Qt's own German dialog texts, and the checkers of what the install
    # puts into the desktop (the .desktop file, the MIME type, rsvg-convert for the icons).
    qttranslations5-l10n
    desktop-file-utils      # desktop-file-validate, update-desktop-database
    shared-mime-info        # update-mime-database
    libxml2-utils           # xmllint
    libglib2.0-bin          # gio: how file managers see the types of installed files
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update
$SUDO apt-get install -y --no-install-recommends "${missing[@]}"
