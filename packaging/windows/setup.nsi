; The setup of Scrivo for Windows: one program for 32-bit and 64-bit systems, for one user or for all.
;
; packaging/release calls makensis with
;   VERSION      as CMakeLists.txt has it
;   STAGE        the folder with the files, laid out by packaging/windows/stage
;   OUTPUT       the setup to make
;   CPU          x86, or amd64 for a Wine that runs 64-bit programs only
;
; Silent: /S, with /AllUsers or /CurrentUser, /D=FOLDER last, and for each option of the components page /FRONTPAGE=,
; /COMPILER=, /SAMPLE=, /STARTMENU=, /PATH= with 0 or 1. Exit status: 0 done, 1 cancelled, 2 failed, 3010 done, and
; something in use goes at the next start of Windows.

Target ${CPU}-unicode
Unicode true
SetCompressor /SOLID lzma
SetCompressorDictSize 64
ManifestDPIAware true
ManifestSupportedOS all

!define NAME "Scrivo"
!define PROG_ID "Kestrel.Connect"
!define CLASS "{A349BFC6-03EA-4860-BDC5-421DBEDABC7D}"
!define SETUP_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define FRONTPAGE_KEY "Software\Microsoft\Office\FrontPage\Addins\${PROG_ID}"
!define ACTIVE_SETUP_KEY "Software\Microsoft\Active Setup\Installed Components\${CLASS}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${SETUP_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${SETUP_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODEPAGE_SHOWUSERNAME

!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include WinVer.nsh
!include x64.nsh
!include "${STAGE}/files.nsh"
!include "in_use.nsh"
!include "library.nsh"
!include "path.nsh"
; The folders of the Start menu are those of whom the setup is for.
!macro OwnShellVarContext
  ${If} $MultiUser.InstallMode == AllUsers
    SetShellVarContext all
  ${EndIf}
!macroend
!include "profile.nsh"
!include "compiler.nsh"

Var CompilerText  ; what the components page says of the help compiler

Name "${NAME}"
BrandingText "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
!uninstfinalize '../sign "%1"' = 0  ; from the folder of this script
ShowInstDetails nevershow
ShowUninstDetails nevershow
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${NAME} setup"
VIAddVersionKey LegalCopyright "The Scrivo authors"

; ---- Pages

!define MUI_ICON "${STAGE}/pictures/setup.ico"
!define MUI_UNICON "${STAGE}/pictures/setup.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${STAGE}/pictures/side.bmp"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "${STAGE}/pictures/side.bmp"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${STAGE}/pictures/header.bmp"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_WELCOMEPAGE_TITLE "${NAME} ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "${NAME} turns webs made with FrontPage or SharePoint Designer into compiled help files (.chm), and \
help files back into webs.$\r$\n$\r$\nThis installs the add-in for both applications, ${NAME} Host for those who have neither, \
the command line, and a help compiler.$\r$\n$\r$\nPlease close FrontPage and SharePoint Designer first."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${STAGE}/all/LICENSE.txt"
!define MULTIUSER_PAGE_CUSTOMFUNCTION_LEAVE ShowOptions
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start ${NAME} Host"
!define MUI_FINISHPAGE_RUN_FUNCTION StartHost
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\Scrivo.CHM"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Show the help"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; Through the desktop's own process, so that it does not inherit the setup's rights.
Function StartHost
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\ScrivoHost.exe"'
FunctionEnd

; ---- What is installed

Section "${NAME}" Core
  SectionIn RO
  DetailPrint "Looking for an earlier version"
  Call RemoveEarlier
  Call CloseHost
  !insertmacro FreePrograms ""
  !insertmacro InstallFiles_all
  ${If} ${RunningX64}
    !insertmacro InstallFiles_x64
  ${Else}
    !insertmacro InstallFiles_x86
  ${EndIf}
  !insertmacro InstallLibrary x86
  ${If} ${RunningX64}
    !insertmacro InstallLibrary x64
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro Fail "Not all files could be written to $INSTDIR."
  ${EndIf}
  WriteRegStr SHCTX "${SETUP_KEY}" DisplayName "${NAME}"
  WriteRegStr SHCTX "${SETUP_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${SETUP_KEY}" Publisher "The Scrivo authors"
  WriteRegStr SHCTX "${SETUP_KEY}" DisplayIcon "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${SETUP_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${SETUP_KEY}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${SETUP_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${SETUP_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${SETUP_KEY}" NoRepair 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${SETUP_KEY}" EstimatedSize $0
SectionEnd

Section "Add-in for FrontPage" FrontPage
  ; FrontPage is a 32-bit application, whatever Windows is.
  SetRegView 32
  WriteRegStr SHCTX "${FRONTPAGE_KEY}" FriendlyName "ScrivoBuilder"
  WriteRegStr SHCTX "${FRONTPAGE_KEY}" Description "Front Page site to Microsoft Help Workshop converter"
  WriteRegDWORD SHCTX "${FRONTPAGE_KEY}" LoadBehavior 3
  !insertmacro NativeView
SectionEnd

Section "Help compiler for the add-in" Compiler
  Call TakeCompilerPlace
SectionEnd

Section "Sample web" Sample
  Call PutSample
SectionEnd

Section "Start menu" StartMenu
  SetOutPath "$INSTDIR"
  CreateDirectory "$SMPROGRAMS\${NAME}"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME} Host.lnk" "$INSTDIR\ScrivoHost.exe"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME} Help.lnk" "$INSTDIR\Scrivo.CHM"
SectionEnd

Section /o "scrivo and hhc on PATH" Path
  StrCpy $0 "$INSTDIR\bin"
  Call AddToPath
SectionEnd

; The choices, for the next version and for each user who logs on; then the other users.
Section -Choices
  !macro RememberOption SECTION
    ${If} ${SectionIsSelected} ${${SECTION}}
      WriteRegDWORD SHCTX "${SETUP_KEY}" "Option${SECTION}" 1
    ${Else}
      WriteRegDWORD SHCTX "${SETUP_KEY}" "Option${SECTION}" 0
    ${EndIf}
  !macroend
  !insertmacro RememberOption FrontPage
  !insertmacro RememberOption Compiler
  !insertmacro RememberOption Sample
  !insertmacro RememberOption StartMenu
  !insertmacro RememberOption Path
  ${If} $MultiUser.InstallMode == AllUsers
    !insertmacro ActiveSetup
  ${EndIf}
  !insertmacro TellInUse
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Core} "The add-in for SharePoint Designer, 32-bit and 64-bit, ${NAME} Host, and the programs \
scrivo, hhc and hh."
  !insertmacro MUI_DESCRIPTION_TEXT ${FrontPage} "Have FrontPage load the add-in too."
  !insertmacro MUI_DESCRIPTION_TEXT ${Compiler} "$CompilerText"
  !insertmacro MUI_DESCRIPTION_TEXT ${Sample} "A web to try everything with, in your documents folder."
  !insertmacro MUI_DESCRIPTION_TEXT ${StartMenu} "${NAME} Host and the help in the Start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${Path} "Call scrivo and hhc in any command prompt by their names. The unpacker, hh, is left \
out, because Windows has a program of that name."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; ---- Before the pages

Function .onInit
  StrCpy $0 $INSTDIR  ; of /D=
  Push $0
  !insertmacro NativeView
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/AllUsers" $1
  ${IfNot} ${Errors}
    !insertmacro NeedRights "Installing"
  ${EndIf}
  ClearErrors
  !insertmacro MULTIUSER_INIT
  Pop $0
  ${If} $0 != ""
    StrCpy $INSTDIR $0
  ${EndIf}
  Call ShowOptions
FunctionEnd

; Each option as it was chosen the last time, else as it is at first, else as the command line says.
!macro ReadOption SECTION SWITCH
  ClearErrors
  ReadRegDWORD $0 SHCTX "${SETUP_KEY}" "Option${SECTION}"
  ${GetParameters} $1
  ${GetOptions} $1 "/${SWITCH}=" $2
  ${IfThen} $2 != "" ${|} StrCpy $0 $2 ${|}
  ${If} $0 == 1
    !insertmacro SelectSection ${${SECTION}}
  ${ElseIf} $0 == 0
    !insertmacro UnselectSection ${${SECTION}}
  ${EndIf}
!macroend

Function ShowOptions
  Call FindCompiler
  ${If} $OtherCompiler == ""
    StrCpy $CompilerText "Let the add-in's Compile command use the help compiler of ${NAME}. No other one is set for you."
    !insertmacro SelectSection ${Compiler}
  ${Else}
    StrCpy $CompilerText "The add-in uses the compiler in $OtherCompiler. Tick this to use that of ${NAME} instead."
    !insertmacro UnselectSection ${Compiler}
  ${EndIf}
  !insertmacro ReadOption FrontPage FRONTPAGE
  !insertmacro ReadOption Compiler COMPILER
  !insertmacro ReadOption Sample SAMPLE
  !insertmacro ReadOption StartMenu STARTMENU
  !insertmacro ReadOption Path PATH
FunctionEnd

; An earlier version goes first, with all that it has put there; what the user chose then is chosen again.
Function RemoveEarlier
  ReadRegStr $0 SHCTX "${SETUP_KEY}" InstallLocation
  ${If} $0 == ""
  ${OrIfNot} ${FileExists} "$0\uninstall.exe"
    Return
  ${EndIf}
  ; Here, since the silent uninstaller asks nobody.
  Push $INSTDIR
  StrCpy $INSTDIR $0
  Call CloseHost
  !insertmacro FreePrograms ""
  Pop $INSTDIR
  DetailPrint "Removing the earlier version from $0"
  ; In place, which takes the folder last and without quotes, blanks or not.
  ExecWait '"$0\uninstall.exe" /S /$MultiUser.InstallMode _?=$0'
  ReadRegStr $1 SHCTX "${SETUP_KEY}" InstallLocation
  ${If} $1 != ""
    !insertmacro Fail "The earlier version in $0 could not be removed. Close what uses it, and start this setup again."
  ${EndIf}
  Delete "$0\uninstall.exe"
  RMDir "$0"
FunctionEnd

; ---- Uninstalling

Function un.onInit
  !insertmacro NativeView
  ReadRegStr $0 HKLM "${SETUP_KEY}" InstallLocation
  ${If} $0 == $INSTDIR
    !insertmacro NeedRights "Removing what is installed"
  ${EndIf}
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section Uninstall
  Call un.CloseHost
  !insertmacro FreePrograms "un."
  ReadRegDWORD $0 SHCTX "${SETUP_KEY}" OptionPath
  ${If} $0 == 1
    StrCpy $0 "$INSTDIR\bin"
    Call un.RemoveFromPath
  ${EndIf}
  ReadRegDWORD $0 SHCTX "${SETUP_KEY}" OptionStartMenu
  ${If} $0 == 1
    Delete "$SMPROGRAMS\${NAME}\${NAME} Host.lnk"
    Delete "$SMPROGRAMS\${NAME}\${NAME} Help.lnk"
    RMDir "$SMPROGRAMS\${NAME}"
  ${EndIf}
  ReadRegDWORD $0 SHCTX "${SETUP_KEY}" OptionSample
  ${If} $0 == 1
    Call un.TakeSample
  ${EndIf}
  Call un.LeaveCompilerPlace
  ReadRegDWORD $0 SHCTX "${SETUP_KEY}" OptionFrontPage
  ${If} $0 == 1
    SetRegView 32
    DeleteRegValue SHCTX "${FRONTPAGE_KEY}" FriendlyName
    DeleteRegValue SHCTX "${FRONTPAGE_KEY}" Description
    DeleteRegValue SHCTX "${FRONTPAGE_KEY}" LoadBehavior
    !insertmacro DeleteEmptyKeys "${FRONTPAGE_KEY}" 3
    !insertmacro NativeView
  ${EndIf}
  ${If} ${RunningX64}
    !insertmacro UninstallLibrary x64
  ${EndIf}
  !insertmacro UninstallLibrary x86
  !insertmacro DeleteFiles
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  ${If} $InUse == 1
    RMDir /REBOOTOK "$INSTDIR"
  ${EndIf}
  ${If} $MultiUser.InstallMode == AllUsers
    DeleteRegKey HKLM "${ACTIVE_SETUP_KEY}"
    DeleteRegKey HKCU "${ACTIVE_SETUP_KEY}"
    DeleteRegKey /ifempty HKCU "Software\Microsoft\Active Setup\Installed Components"
    DeleteRegKey /ifempty HKCU "Software\Microsoft\Active Setup"
  ${EndIf}
  DeleteRegKey SHCTX "${SETUP_KEY}"
  ${If} $MultiUser.InstallMode == CurrentUser
    !insertmacro DeleteEmptyKeys "Software\Microsoft\Windows\CurrentVersion\Uninstall" 0
    RMDir "$LOCALAPPDATA\Programs"
  ${EndIf}
  !insertmacro TellInUse
SectionEnd
