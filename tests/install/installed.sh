#!/bin/sh
# installed.sh BUILD SOURCE WORK: installs BUILD, moves the installation, and uses it: the command, and
# hosts in C, C++ and Python made by CMake, by pkg-config and by hand. Examples read what comes out.
set -eu
build=$1 source=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cd "$work"
cmake --install "$build" --prefix "$work/first" >install.log
mv first moved
prefix=$work/moved
for file in man/man1/scan695-find.1 man/man3/scan695.3 bash-completion/completions/scan695 \
    zsh/site-functions/_scan695; do
    [ -s "$prefix/share/$file" ]
done
library=$(find "$prefix" -name libscan695.so)
sample=$source/samples/c166.abs
examples=$source/examples

"$prefix/bin/scan695" "$sample" -o want.stf
same() { cmp want.stf "$1"; }

cmake -S "$source/tests/install/client" -B client -DEXAMPLES="$examples" \
    -DCMAKE_PREFIX_PATH="$prefix" >client.log
cmake --build client >>client.log
for language in c cpp; do
    ./client/convert_$language "$sample" cmake_$language.stf >/dev/null
    same cmake_$language.stf
done
PKG_CONFIG_PATH=$(dirname "$library")/pkgconfig
export PKG_CONFIG_PATH
cc -std=c11 -Wall -Werror "$examples/convert.c" $(pkg-config --cflags --libs scan695) -o by_pkg_config
c++ -std=c++20 "$examples/convert.cpp" -I"$prefix/include" "$library" -o by_hand
for host in by_pkg_config by_hand; do
    LD_LIBRARY_PATH=$(dirname "$library") ./$host "$sample" $host.stf >/dev/null
    same $host.stf
done
python3 "$examples/convert.py" "$library" "$sample" python.stf >/dev/null
same python.stf

for fetch in OFF ON; do
    cmake -S "$source/tests/install/subproject" -B sub_$fetch -DSOURCE="$source" -DFETCH=$fetch \
        >sub.log || { cat sub.log; exit 1; }
done

cp "$sample" prog.abs
"$prefix/bin/scan695" prog.abs --fst PROG.FST
python3 "$examples/read_stf.py" want.stf >functions
grep -q '^0x24a SystemTick beat$' functions
grep -q '^1061 bytes of code and data$' functions
[ "$(python3 "$examples/read_fst.py" PROG.FST 0x250)" = "SystemTick+0x6 main.c:53" ]
