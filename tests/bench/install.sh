#!/bin/sh
# The commands of an installation, and nothing else.
set -e
bundle=$1 library=$2 fonts=$3 applications=$4 shared=$5
resources="$bundle/Resources"
for font in "$resources"/*.ttf; do
    cp "$font" "$fonts"
done
"$bundle/Helpers/ditto" -v -x -k "$resources/morvella.zip" "$library"
"$bundle/Helpers/ditto" -v -x -k "$resources/Tressimo.zip" "$applications/Morvella"
"$bundle/Helpers/ditto" -v -x -k "$resources/ISF.zip" "$shared/Morvella"
mv "$library/Morvella/Morvella.app" "$library/Morvella/.Morvella.app"
