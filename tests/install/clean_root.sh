#!/bin/sh
# Installs the packages that lie beside it step by step, as users would, uses what each brings, and takes all away again.
# For a root of Debian with nothing else in it: ./dev check package runs it there.
#
# usage: clean_root.sh VERSION
set -eux
cd "$(dirname "$0")"
version=$1
export DEBIAN_FRONTEND=noninteractive
install_packages() { apt-get install -qq -y --no-install-recommends "$@" >>apt.log; }
ours() { find / -xdev -path "$PWD" -prune -o -path /proc -prune -o -path /sys -prune -o -ipath '*ormelle*' -print; }

# The tool, and nothing that only programs are built with.
install_packages ./libormelle[0-9]*.deb ./ormelle-tools_*.deb
dpkg-query -W -f='${Package} ${Section}\n' | awk '$2 ~ /devel$/' | (! grep .)
ormelle new map map.iv
ormelle render map.iv -o map.png
ormelle render map.iv -o map.pdf
printf '%s\n' '# vtk DataFile Version 3.0' step ASCII 'DATASET UNSTRUCTURED_GRID' 'POINTS 3 float' '0 0 0 1 0 0 0 1 0' \
  'CELLS 1 4' '3 0 1 2' 'CELL_TYPES 1' 5 'POINT_DATA 3' 'SCALARS heat float 1' 'LOOKUP_TABLE default' '1 2 3' >part.vtk
ormelle convert part.vtk part.iv
ormelle render part.vtk -o part.png
ormelle render part.vtk -o part.svg

# The viewer.
install_packages xvfb xauth
xvfb-run -a ormelle view map.iv --size 400x300 --screenshot window.png

# A program, through CMake and through pkg-config, and the guide's.
install_packages ./libormelle-dev_*.deb g++ cmake make pkg-config
cmake -S consumer -B consumer/build "-DExpected_VERSION=$version"
cmake --build consumer/build
consumer/build/consumer "$version"
[ "$(pkg-config --modversion ormelle)" = "$version" ]
# shellcheck disable=SC2046  # words, not one
c++ -std=c++17 consumer/consumer.cpp $(pkg-config --cflags --libs ormelle) -o plain
./plain "$version"
cmake -DAWK=awk -DGUIDE=guide "-DPROJECT=$PWD/my" -P guide_project.cmake
cmake -S my -B my/build
cmake --build my/build
my/build/my_viewer start.iv
ormelle render start.iv -o start.png

# The module, which draws without the tool.
apt-get purge -qq -y ormelle-tools libormelle-dev >>apt.log
apt-get autoremove -qq -y --purge >>apt.log
install_packages ./python3-ormelle_*.deb
python3 terrain.py

apt-get purge -qq -y 'libormelle*' >>apt.log
[ -z "$(ours)" ] || {
  ours
  exit 1
}
