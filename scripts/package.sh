#!/usr/bin/env bash
# Builds the Windows Installer package of an installation folder:
#   scripts/package.sh INSTALLATION_FOLDER VERSION OUTPUT.msi
# installer/Oriel.wxs holds the files, the registration, the shortcut and the
# folders; what wixl cannot express is added here as rows: the language file
# written from the LANGUAGE property, the write access of the users to the two
# folders the program writes, the place of the two actions that take back the
# remembered folder and language, and LANGUAGE being passed from the client
# to the installing service (SecureCustomProperties).
set -euo pipefail

[ $# -eq 3 ] || { echo "usage: $0 INSTALLATION_FOLDER VERSION OUTPUT.msi" >&2; exit 2; }
source_dir="$(cd "$1" && pwd)"
version="$2"
output="$(cd "$(dirname "$3")" && pwd)/$(basename "$3")"
wxs="$(cd "$(dirname "$0")/.." && pwd)/installer/Oriel.wxs"

# wixl takes file sources relative to the working directory only.
(cd "$source_dir" && wixl -a x64 -D Version="$version" -D SourceDir=. -o "$output" "$wxs")

q=()
sql() { q+=(-q "$1"); }

# Config\Language.ini, section Language, key CorvaneLanguage = [LANGUAGE],
# written only when LANGUAGE is given: without the file the program is Chinese.
sql "CREATE TABLE \`IniFile\` (\`IniFile\` CHAR(72) NOT NULL, \`FileName\` CHAR(255) NOT NULL,
  \`DirProperty\` CHAR(72), \`Section\` CHAR(96) NOT NULL, \`Key\` CHAR(128) NOT NULL,
  \`Value\` CHAR(255) NOT NULL, \`Action\` SHORT NOT NULL, \`Component_\` CHAR(72) NOT NULL
  PRIMARY KEY \`IniFile\`)"
sql "INSERT INTO \`IniFile\` (\`IniFile\`, \`FileName\`, \`DirProperty\`, \`Section\`, \`Key\`,
  \`Value\`, \`Action\`, \`Component_\`) VALUES ('LanguageIni', 'Language.ini', 'CONFIGDIR',
  'Language', 'CorvaneLanguage', '[LANGUAGE]', 0, 'LanguageFile')"
sql "UPDATE \`Component\` SET \`Condition\` = 'LANGUAGE' WHERE \`Component\` = 'LanguageFile'"
sql "INSERT INTO \`InstallExecuteSequence\` (\`Action\`, \`Sequence\`) VALUES ('RemoveIniValues', 3100)"
sql "INSERT INTO \`InstallExecuteSequence\` (\`Action\`, \`Sequence\`) VALUES ('WriteIniValues', 5100)"

# The program runs as the user who starts it, or as the client that
# activates it, and writes its settings file and logs below itself. Those two
# folders, and only they, let the users change files (the rest of the
# program folder stays administrators' only).
sddl='D:PAI(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1301bf;;;BU)'
sql "CREATE TABLE \`MsiLockPermissionsEx\` (\`MsiLockPermissionsEx\` CHAR(72) NOT NULL,
  \`LockObject\` CHAR(72) NOT NULL, \`Table\` CHAR(32) NOT NULL, \`SDDLText\` LONGCHAR NOT NULL,
  \`Condition\` CHAR(255) PRIMARY KEY \`MsiLockPermissionsEx\`)"
for folder in CONFIGDIR LOGDIR; do
  sql "INSERT INTO \`MsiLockPermissionsEx\` (\`MsiLockPermissionsEx\`, \`LockObject\`, \`Table\`,
    \`SDDLText\`) VALUES ('Users$folder', '$folder', 'CreateFolder', '$sddl')"
done

# Right after AppSearch has read them (wixl puts them at the end).
sql "UPDATE \`InstallExecuteSequence\` SET \`Sequence\` = 51 WHERE \`Action\` = 'KeepInstallDir'"
sql "UPDATE \`InstallExecuteSequence\` SET \`Sequence\` = 52 WHERE \`Action\` = 'KeepLanguage'"

sql "UPDATE \`Property\` SET \`Value\` = 'WIX_DOWNGRADE_DETECTED;WIX_UPGRADE_DETECTED;LANGUAGE'
  WHERE \`Property\` = 'SecureCustomProperties'"
msibuild "$output" "${q[@]}"
