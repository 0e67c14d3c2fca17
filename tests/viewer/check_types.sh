#!/usr/bin/env bash
# Checks the types of the viewer's sources.
# usage: check_types.sh VIEWER FOLDER NPM NODE    FOLDER is for the packages
set -euo pipefail
viewer=$1 folder=$2 npm=$3 node=$4

rm -rf "$folder/src"
mkdir -p "$folder"
cp -r "$viewer"/{package.json,package-lock.json,tsconfig.json,src} "$folder"
cd "$folder"
"$npm" ci --ignore-scripts --no-audit --no-fund --loglevel=error
"$node" node_modules/typescript/bin/tsc --noEmit
