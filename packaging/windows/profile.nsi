; profile.exe: what a setup for all users leaves to be done for each of them, run by Windows at the next logon. It does for
; the user what the setup has done for the one who ran it, as far as that one chose it.

Target ${CPU}-unicode
Unicode true
SetCompressor lzma
RequestExecutionLevel user
SilentInstall silent
Name "Scrivo"
OutFile "${OUTPUT}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Scrivo"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Scrivo, for a new user"
VIAddVersionKey LegalCopyright "The Scrivo authors"

!define SETUP_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Scrivo"
!include LogicLib.nsh
!include x64.nsh
!macro OwnShellVarContext
!macroend
!include "profile.nsh"

Section
  StrCpy $INSTDIR $EXEDIR
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ReadRegDWORD $0 HKLM "${SETUP_KEY}" OptionSample
  ${If} $0 == 1
    Call PutSample
  ${EndIf}
  ReadRegDWORD $0 HKLM "${SETUP_KEY}" OptionCompiler
  Call FindCompiler
  ${If} $0 == 1
  ${AndIf} $OtherCompiler == ""
    WriteRegStr HKCU "${WORKSHOP_KEY}" InstallDir "$INSTDIR\bin"
  ${EndIf}
SectionEnd
