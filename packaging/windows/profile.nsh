; What each user has for himself: the sample web in the documents folder, and the place of the help compiler that the add-in
; uses. The setup does this for who runs it; for the others profile.exe does, when they log on.

!define WORKSHOP_KEY "Software\Microsoft\HTML Help Workshop"
!define SAMPLE_WEB "Scrivo Builder sample web"

Var OtherCompiler  ; the folder of a compiler that is set for the user and is not ours; "" for none
Var SampleFolder   ; where the user's sample web lies

!macro FindSampleFolder
  SetShellVarContext current
  StrCpy $SampleFolder "$DOCUMENTS\${SAMPLE_WEB}"
  !insertmacro OwnShellVarContext
!macroend

Function FindCompiler
  ReadRegStr $OtherCompiler HKCU "${WORKSHOP_KEY}" InstallDir
  ${IfThen} $OtherCompiler == "$INSTDIR\bin" ${|} StrCpy $OtherCompiler "" ${|}
  ClearErrors
FunctionEnd

; Puts the files of the sample web that are not there; $R0 is a folder in it, "" for the web itself.
Function PutSampleFolder
  Push $0
  Push $1
  CreateDirectory "$SampleFolder$R0"
  FindFirst $0 $1 "$INSTDIR\sample\${SAMPLE_WEB}$R0\*.*"
  ${DoUntil} $1 == ""
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      ${If} ${FileExists} "$INSTDIR\sample\${SAMPLE_WEB}$R0\$1\*.*"
        Push $R0
        StrCpy $R0 "$R0\$1"
        Call PutSampleFolder
        Pop $R0
      ${Else}
        StrCpy $R1 "$INSTDIR\sample\${SAMPLE_WEB}$R0\$1"
        StrCpy $R2 "$SampleFolder$R0\$1"
        System::Call 'kernel32::CopyFileW(w R1, w R2, i 1)'  ; 1: never over one that is there
      ${EndIf}
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  ClearErrors
  Pop $1
  Pop $0
FunctionEnd

Function PutSample
  !insertmacro FindSampleFolder
  StrCpy $R0 ""
  Call PutSampleFolder
FunctionEnd
