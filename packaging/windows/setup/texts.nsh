; What the installer says, beside what its compiler brings in these languages.
; SPDX-License-Identifier: GPL-3.0-or-later
!macro Say name english german japanese
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_GERMAN} "${german}"
  LangString ${name} ${LANG_JAPANESE} "${japanese}"
!macroend

!insertmacro Say NAME_CONTENT "Sounds and manual" "Klänge und Handbuch" "音源とマニュアル"
!insertmacro Say NAME_PROGRAM "Program" "Programm" "プログラム"
!insertmacro Say NAME_VST3 "VST 3 plug-in" "VST-3-Plug-in" "VST 3 プラグイン"
!insertmacro Say NAME_CLAP "CLAP plug-in" "CLAP-Plug-in" "CLAP プラグイン"
!insertmacro Say NAME_VST2 "VST 2 plug-in" "VST-2-Plug-in" "VST 2 プラグイン"

!insertmacro Say ABOUT_CONTENT "512 drum sounds, the kits and the manual. The program and all plug-ins need them." \
  "512 Schlagzeugklänge, die Kits und das Handbuch. Das Programm und alle Plug-ins brauchen sie." \
  "512 種類のドラム音源、キット、マニュアル。プログラムとすべてのプラグインに必要です。"
!insertmacro Say ABOUT_PROGRAM "Plays without a host. It gets an entry in the Start menu." \
  "Spielt ohne Host und erhält einen Eintrag im Startmenü." \
  "ホストなしで演奏できます。スタートメニューに登録されます。"
!insertmacro Say ABOUT_VST3 "For hosts that load VST 3 plug-ins." "Für Hosts, die VST-3-Plug-ins laden." \
  "VST 3 に対応したホスト用です。"
!insertmacro Say ABOUT_CLAP "For hosts that load CLAP plug-ins." "Für Hosts, die CLAP-Plug-ins laden." \
  "CLAP に対応したホスト用です。"
!insertmacro Say ABOUT_VST2 "For hosts that load VST 2 plug-ins. Its folder is asked for later. Each kit comes as a preset file too." \
  "Für Hosts, die VST-2-Plug-ins laden. Nach dem Ordner wird später gefragt. Jedes Kit liegt auch als Preset-Datei bei." \
  "VST 2 に対応したホスト用です。フォルダーは後で選択します。各キットのプリセットファイルも含まれます。"

!insertmacro Say VST2_TITLE "VST 2 folder" "VST-2-Ordner" "VST 2 フォルダー"
!insertmacro Say VST2_SUBTITLE "Choose the folder in which your host looks for VST 2 plug-ins." \
  "Wählen Sie den Ordner, in dem Ihr Host VST-2-Plug-ins sucht." \
  "ホストが VST 2 プラグインを検索するフォルダーを選択してください。"
!insertmacro Say VST2_TEXT "Sivray.dll goes into this folder. If your host looks in several, any of them will do." \
  "Sivray.dll kommt in diesen Ordner. Sucht Ihr Host in mehreren, ist jeder davon recht." \
  "Sivray.dll をこのフォルダーにインストールします。ホストが複数のフォルダーを検索する場合は、どれでもかまいません。"
!insertmacro Say VST2_FOLDER "Folder for VST 2" "Ordner für VST 2" "VST 2 のフォルダー"

!insertmacro Say REMOVES_OLD "Removing the installed version" "Die installierte Version wird entfernt" \
  "インストール済みのバージョンを削除しています"
!insertmacro Say IN_USE "Sivray is in use. Close it and every host that has loaded it, then start again." \
  "Sivray wird gerade benutzt. Schließen Sie es und alle Hosts, die es geladen haben, und beginnen Sie dann von vorn." \
  "Sivray は使用中です。Sivray と、それを読み込んでいるホストをすべて終了してから、もう一度実行してください。"
!insertmacro Say NEEDS_ADMINISTRATOR "What is for all users of this computer can only be installed and removed by an administrator." \
  "Was für alle Benutzer dieses Computers ist, kann nur ein Administrator installieren und entfernen." \
  "すべてのユーザー用のインストールと削除には、管理者の権限が必要です。"
!insertmacro Say NO_RECORD "Windows does not know this installation any more. Install Sivray again, then remove it." \
  "Windows kennt diese Installation nicht mehr. Installieren Sie Sivray noch einmal und entfernen Sie es dann." \
  "このインストールの記録が見つかりません。Sivray をもう一度インストールしてから削除してください。"
!insertmacro Say NEEDS_WINDOWS_10 "Sivray needs Windows 10 or later." "Sivray braucht Windows 10 oder neuer." \
  "Sivray には Windows 10 以降が必要です。"
