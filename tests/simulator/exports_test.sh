#!/bin/sh
# usage: exports_test.sh LIBRARY HEADER...: the library shows what the headers declare and nothing else.
set -eu
library=$1
shift
shown=$(nm -D --defined-only "$library" | awk '{print $3}' | sort)
declared=$(sed -n 's/^VEX_API VEX_STATUS \(Vex[A-Za-z]*\)(.*/\1/p' "$@" | sort)
[ "$shown" = "$declared" ] && [ "$(echo "$shown" | wc -l)" -gt 50 ] && exit 0
echo "shown:"
echo "$shown"
echo "declared:"
echo "$declared"
exit 1
