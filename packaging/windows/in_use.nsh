; What is in use while it is to be replaced or removed, and how failures are told.

Var InUse  ; 1 when a file that somebody uses goes at the next start of Windows

; Ends the setup. Nothing waits for an answer in a silent one.
!macro Fail TEXT
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  SetErrorLevel 2
  Abort "${TEXT}"
!macroend

; The registry of 64-bit programs where there is one.
!macro NativeView
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
!macroend

; Ends a setup that would need the rights of an administrator, told without waiting for an answer where nobody could give one.
!macro NeedRights DOING
  UserInfo::GetAccountType
  Pop $1
  ${If} $1 != Admin
    MessageBox MB_OK|MB_ICONSTOP "${DOING} for all users needs the rights of an administrator." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
!macroend

; Deletes a key that is empty, then those above it, LEVELS more.
!macro DeleteEmptyKeys KEY LEVELS
  StrCpy $0 "${KEY}"
  StrCpy $1 0
  ${Do}
    DeleteRegKey /ifempty SHCTX $0
    ${GetParent} $0 $0
    IntOp $1 $1 + 1
  ${LoopUntil} $1 > ${LEVELS}
!macroend

; What is told at the end, and the status of installers that want a restart.
!macro TellInUse
  ${If} $InUse == 1
    MessageBox MB_OK|MB_ICONINFORMATION "An application is using the earlier Scrivo.dll. It goes on with it until it is closed; \
the earlier file is removed when Windows starts the next time." /SD IDOK
    SetErrorLevel 3010
  ${EndIf}
!macroend

; Whether a program runs: its file cannot be opened for writing. Result in $R1: 1 when it does.
!macro IsRunning FILE
  StrCpy $R1 0
  ${If} ${FileExists} "${FILE}"
    ClearErrors
    FileOpen $R2 "${FILE}" a
    ${If} ${Errors}
      StrCpy $R1 1
    ${Else}
      FileClose $R2
    ${EndIf}
    ClearErrors
  ${EndIf}
!macroend

!macro InUseFunctions UN
  ; Has Scrivo Host closed, once the user agrees, and waits for its end; ten seconds at most each time.
  Function ${UN}CloseHost
    ${Do}
      !insertmacro IsRunning "$INSTDIR\ScrivoHost.exe"
      ${IfThen} $R1 == 0 ${|} Return ${|}
      MessageBox MB_OKCANCEL|MB_ICONINFORMATION "Scrivo Host is running. OK closes it." /SD IDOK IDOK close
      SetErrorLevel 1
      Abort "Scrivo Host is running."
      close:
      ${For} $R3 1 100
        FindWindow $R4 "ScrivoHostWindow"
        ; With a dialog open it takes no orders; the user has to answer that first.
        System::Call 'user32::IsWindowEnabled(p R4) i .R5'
        ${If} $R5 <> 0
          SendMessage $R4 ${WM_CLOSE} 0 0 /TIMEOUT=5000
        ${EndIf}
        Sleep 100
        !insertmacro IsRunning "$INSTDIR\ScrivoHost.exe"
        ${IfThen} $R1 == 0 ${|} Return ${|}
      ${Next}
      ${If} ${Silent}
        !insertmacro Fail "Scrivo Host does not close."
      ${EndIf}
    ${Loop}
  FunctionEnd

  ; Waits, with the user's help, until a program can be replaced. Takes its file in $R0.
  Function ${UN}FreeProgram
    ${Do}
      !insertmacro IsRunning $R0
      ${IfThen} $R1 == 0 ${|} Return ${|}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$R0 is in use. Wait until it has finished, or end it; then try again." \
        /SD IDCANCEL IDRETRY again
      SetErrorLevel 2
      Abort "$R0 is in use."
      again:
    ${Loop}
  FunctionEnd
!macroend
!insertmacro InUseFunctions ""
!insertmacro InUseFunctions "un."

!macro FreePrograms UN
  StrCpy $R0 "$INSTDIR\bin\scrivo.exe"
  Call ${UN}FreeProgram
  StrCpy $R0 "$INSTDIR\bin\hhc.exe"
  Call ${UN}FreeProgram
  StrCpy $R0 "$INSTDIR\hh.exe"
  Call ${UN}FreeProgram
!macroend
