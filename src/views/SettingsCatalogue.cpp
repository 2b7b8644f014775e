// The texts and pictures of the guide.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/SettingsCatalogue.h"

#include <algorithm>
#include <array>

namespace tesh::bramel {
namespace {

constexpr std::array<CatalogueRow, 8> kRows{{
    {"Sivray", "Eight pads, one kiln",
     "A drum module of eight pads. Each pad plays one sample of the library through pitch, envelope, punch, low "
     "boost and pan, and sends to one of twenty-six master effects.",
     "8つのパッドを持つドラムモジュールです。各パッドはライブラリのサンプルを1つ鳴らし、ピッチ、エンベロープ、パンチ、"
     "ローブースト、パンを通って、26種類のマスターエフェクトの1つへ送られます。"},
    {"Pads", "Notes C1 to G1",
     "Click a pad to hear it. Notes 36 to 43 of the host play the pads from left to right, and light them. The mix "
     "page puts the faders in the place of the pads.",
     "パッドをクリックすると音が鳴ります。ホストのノート36から43が左から順にパッドを鳴らし、点灯させます。"
     "ミックスのページでは、パッドの場所にフェーダーが並びます。"},
    {"Sound", "Pitch and decay",
     "Drag a knob up or down; hold Alt for fine steps. Pitch moves 24 semitones each way. Decay sets how long the "
     "sound lasts. Shot plays it to its end, Gate stops it with the key.",
     "ノブは上下にドラッグします。Altキーを押すと細かく動きます。ピッチは上下24半音、ディケイは音の長さです。"
     "ショットは最後まで鳴り、ゲートは鍵盤を離すと止まります。"},
    {"Character", "Punch, boost, reverse",
     "Punch sharpens the attack, boost lifts the lows. REV plays the sample backwards. FX sends the pad to the "
     "master effect.",
     "パンチはアタックを鋭くし、ブーストは低音を持ち上げます。REVはサンプルを逆に再生します。"
     "FXはパッドをマスターエフェクトへ送ります。"},
    {"Mix", "Pan, mute, groups, level",
     "Pads of one group, A or B, cut each other off, as a closed hi-hat does an open one. Mute silences a pad and "
     "lights up. The fader sets its level.",
     "同じグループ(AまたはB)のパッドは互いの音を止めます。クローズとオープンのハイハットがその例です。"
     "ミュートは音を消して点灯します。フェーダーは音量です。"},
    {"Effects", "Twenty-six of them",
     "Click the effect's name for the list. The two knobs beside it change their meaning with the effect, and "
     "their captions say what they do. Master sets the level of the whole kit.",
     "エフェクト名をクリックするとリストが開きます。横の2つのノブの働きはエフェクトごとに変わり、名前が下に出ます。"
     "マスターはキット全体の音量です。"},
    {"Kits", "Factory and your own",
     "Click the kit's name for the list; the arrows step through it. Save As keeps your own kits, which can be "
     "exported to a file and imported again. A right click on one of them deletes it.",
     "キット名をクリックするとリストが開き、矢印で1つずつ進めます。Save Asで自分のキットを保存でき、"
     "ファイルへの書き出しと読み込みもできます。右クリックで削除します。"},
    {"Samples", "One library for all pads",
     "Click a pad's display for the browser. Pick a category on the left and a sample on the right: it is on the "
     "pad at once, so you can play while you look.",
     "パッドの表示をクリックするとブラウザーが開きます。左でカテゴリー、右でサンプルを選ぶと、すぐにパッドに入ります。"
     "鳴らしながら探せます。"},
}};

}  // namespace

std::span<const CatalogueRow> settingsCatalogue() { return kRows; }

std::size_t catalogueRowOf(std::string_view name) {
  const auto* const found =
      std::find_if(kRows.begin(), kRows.end(), [name](const CatalogueRow& row) { return name == row.name; });
  return found == kRows.end() ? 0 : static_cast<std::size_t>(found - kRows.begin());
}

}  // namespace tesh::bramel
