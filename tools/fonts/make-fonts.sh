#!/bin/sh
# SPDX-License-Identifier: MIT
# Rebuilds the fonts bundled in src/screenBase/fonts/ from Debian packages.
#
# Run by hand only; the output is committed and the build never calls this.
# Needs (Debian bookworm):
#   apt-get install -y --no-install-recommends \
#       fonts-inter fonts-dejavu-core fonts-droid-fallback python3-fonttools
#
# Usage: tools/fonts/make-fonts.sh [OUTDIR]   (default: src/screenBase/fonts)
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
out=${1:-"$root/src/screenBase/fonts"}
mkdir -p "$out"

# Debian's own interpreter: fontTools comes from python3-fonttools, and a
# pyenv or venv python3 earlier in PATH would not see it.
PY=/usr/bin/python3
# pyftsubset is only a wrapper around this module (it ships in the separate
# "fonttools" package); calling the module needs python3-fonttools alone.
pyftsubset() { "$PY" -m fontTools.subset "$@"; }

INTER_DIR=/usr/share/fonts/opentype/inter
DEJAVU=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
DROID=/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf

# The versions the committed files were made from. Others will work but
# give different bytes, so say so.
expect() {
    have=$(dpkg-query -W -f='${Version}' "$1" 2>/dev/null || true)
    if [ -z "$have" ]; then
        echo "missing package $1; see the apt-get line at the top" >&2
        exit 1
    fi
    [ "$have" = "$2" ] || echo "note: $1 is $have, the committed files used $2" >&2
}
expect fonts-inter 4.0~beta7+ds-1
expect fonts-dejavu-core 2.37-6
expect fonts-droid-fallback 1:6.0.1r16-1.1
expect python3-fonttools 4.38.0-1+deb12u1

# --- Tavlo Sans: Inter, the UI face -----------------------------------------
# Thin stands in for "Helvetica Neue Thin" (the big report), Light for
# "Helvetica Neue Light", Regular for buttons and dialogs, SemiBold for the
# titles and default buttons of dialogs. Every weight a screen asks for must
# be here: a missing one is looked for among the system's fonts, and then the
# app looks different on every machine. The Debian files are ~260 KB each, so
# they go in whole; only if a later package makes them bigger than 400 KB are
# they cut down to the scripts the app shows.
#
# The family is renamed to "Tavlo Sans" (Inter declares no Reserved Font
# Name): an Inter installed on the system, of another version or with other
# weights, then can never stand in for the bundled one.
INTER_MAX=409600
INTER_UNICODES="U+0000-007F,U+0080-00FF,U+0100-017F,U+0400-04FF,U+2000-206F,U+2605-2606"
for face in Thin Light Regular SemiBold; do
    src="$INTER_DIR/Inter-$face.otf"
    dst="$out/TavloSans-$face.otf"
    if [ "$(stat -c %s "$src")" -le "$INTER_MAX" ]; then
        cp "$src" "$dst"
    else
        # Default layout features already include kern, liga, calt, ccmp,
        # locl and mark; tnum keeps the digits of ages in columns.
        pyftsubset "$src" \
            --unicodes="$INTER_UNICODES" \
            --layout-features+=kern,liga,tnum \
            --name-IDs='*' --name-languages='*' \
            --output-file="$dst"
    fi
done
"$PY" - "$out" <<'EOF2'
import sys
from fontTools.ttLib import TTFont

out = sys.argv[1]
styles = {"Thin": "Thin", "Light": "Light", "Regular": "Regular", "SemiBold": "Semi Bold"}
for face, style in styles.items():
    path = f"{out}/TavloSans-{face}.otf"
    font = TTFont(path, recalcTimestamp=False)
    name = font["name"]
    version = name.getDebugName(5)
    # Legacy family: one per style but Regular, as Inter itself names them.
    legacy = "Tavlo Sans" if face == "Regular" else f"Tavlo Sans {style}"
    renamed = {
        1: legacy,
        3: f"TavloSans-{face};{version}",
        4: f"Tavlo Sans {style}" if face != "Regular" else "Tavlo Sans",
        6: f"TavloSans-{face}",
        10: f"Inter {style} {version} (Debian fonts-inter 4.0~beta7+ds-1), "
            "glyphs unchanged, family renamed to Tavlo Sans for Tavlo.",
        16: "Tavlo Sans",
        17: style,
    }
    # Only the Windows English records: Qt and fontconfig read those, and
    # leaving others would keep the old name reachable.
    name.names = [r for r in name.names
                  if not (r.nameID in renamed and (r.platformID, r.langID) != (3, 0x409))]
    for nid, text in renamed.items():
        name.setName(text, nid, 3, 1, 0x409)
    if "CFF " in font:
        cff = font["CFF "].cff
        cff.fontNames = [f"TavloSans-{face}"]
        top = cff.topDictIndex[0]
        top.FamilyName = "Tavlo Sans"
        top.FullName = renamed[4]
    font.save(path, reorderTables=True)
EOF2

# --- Tavlo Symbols: zodiac signs, planets, stars ----------------------------
# U+FE0E is kept: DejaVu maps it to an empty zero-width glyph, so the text
# presentation selector after a sign draws nothing instead of tofu.
pyftsubset "$DEJAVU" \
    --unicodes="U+2648-2653,U+263F,U+2640,U+2642-2644,U+2605,U+2606,U+FE0E" \
    --layout-features='' \
    --drop-tables+=MATH,FFTM \
    --name-IDs=0,13,14 \
    --output-file="$out/TavloSymbols.ttf"

# --- Tavlo Han: the twelve animals and five elements -------------------------
# 鼠 牛 虎 兔 龍 蛇 馬 羊 猴 雞 狗 豬 金 水 木 火 土 (traditional forms)
pyftsubset "$DROID" \
    --unicodes="U+9F20,U+725B,U+864E,U+5154,U+9F8D,U+86C7,U+99AC,U+7F8A,U+7334,U+96DE,U+72D7,U+8C6C,U+91D1,U+6C34,U+6728,U+706B,U+571F" \
    --layout-features='' \
    --name-IDs=0,13,14 \
    --output-file="$out/TavloHan.ttf"

# Both licences call for a new name on a changed font (Bitstream Vera,
# Arev; "Droid" is a trademark), and Apache-2.0 wants changed files marked.
# Timestamps are left alone so that a rerun gives the same bytes.
"$PY" - "$out" <<'EOF'
import sys
from fontTools.ttLib import TTFont

out = sys.argv[1]
fonts = [
    ("TavloSymbols.ttf", "Tavlo Symbols", "TavloSymbols", "Version 2.37",
     "Subset of DejaVu Sans 2.37 (Debian fonts-dejavu-core 2.37-6) for Tavlo: "
     "zodiac signs, planet symbols, stars and U+FE0E; renamed as the "
     "Bitstream Vera licence requires."),
    ("TavloHan.ttf", "Tavlo Han", "TavloHan", "Version 1.00c",
     "Subset of Droid Sans Fallback (Debian fonts-droid-fallback "
     "1:6.0.1r16-1.1) for Tavlo: 17 traditional Chinese characters; "
     "glyphs unchanged, renamed and cut down by the Tavlo project."),
]
for fname, family, psname, version, note in fonts:
    path = f"{out}/{fname}"
    font = TTFont(path, recalcTimestamp=False)
    name = font["name"]
    for nid, text in (
        (1, family),
        (2, "Regular"),
        (3, f"{psname}-Regular;{version}"),
        (4, family),
        (5, version),
        (6, psname),
        (10, note),
    ):
        name.setName(text, nid, 3, 1, 0x409)
    font.save(path, reorderTables=True)
EOF

ls -l "$out"/TavloSans-*.otf \
      "$out"/TavloSymbols.ttf "$out"/TavloHan.ttf
