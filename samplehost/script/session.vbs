' A host in a script: plays a small session on the terminal, and checks what becomes of it.
'
'     cscript //nologo session.vbs
'
' The library must be registered (regsvr32 kavrelon.dll); on 64-bit Windows take the 32-bit cscript, which is in
' %SystemRoot%\SysWOW64. Tells each step, and what differs from what it should be. Ends with status 0 when nothing
' does, with 1 otherwise, also when an error has ended the session early.
Option Explicit

' What the terminal asks of its host, and tells it. Any object will do that has these members.
Class Parent
    Public Heard
    Public Property Get ParentConnectionProfile
        ParentConnectionProfile = "script"
    End Property
    Public Property Get ParentIniFile
        ParentIniFile = folder & "\settings.ini"
    End Property
    Public Sub ParentSendData(text)  ' What the user types or pastes goes to the remote system.
        Heard = Heard & "data " & text & "; "
    End Sub
    Public Sub ParentSendBreak
        Heard = Heard & "break; "
    End Sub
    Public Sub ParentSendCommand(text)
        Heard = Heard & text & "; "
    End Sub
    Public Sub ParentWindowClosed
        Heard = Heard & "closed; "
    End Sub
End Class

Dim terminal, receive, table, host, rows, files, folder, differences
differences = 0

' Err tells a caller that resumes of every error that nothing has caught.
On Error Resume Next
Start
If Err.Number = 0 Then PlaySession
If Err.Number <> 0 Then Differs "It has ended early", Err.Number & ", " & Err.Description, "nothing"
If Not IsEmpty(terminal) Then terminal.DestroyClass
If Not IsEmpty(files) Then files.DeleteFolder folder
If differences > 0 Then WScript.Quit 1
WScript.Echo "The session went as expected."
WScript.Quit 0

' The session.

Sub PlaySession
    Connect
    ReceiveText
    CarryOutCommands
    SetProperties
    OpenSecondScreen
    MakeMistakes
    Disconnect
End Sub

' A folder of its own for the settings, and in it one for pictures.
Sub Start
    Dim fso
    Set fso = CreateObject("Scripting.FileSystemObject")
    folder = fso.GetSpecialFolder(2) & "\" & fso.GetTempName
    fso.CreateFolder folder
    Set files = fso
    files.CreateFolder folder & "\Pictures"
    files.CopyFile files.GetParentFolderName(WScript.ScriptFullName) & "\..\demo\harbour.png", folder & "\Pictures\"
    Set terminal = CreateObject("kavrelon.clsTerminal")
End Sub

Sub Connect
    Tell "Connects with " & terminal.PlugInDesc & ", version " & terminal.PlugInVersion
    Set host = New Parent
    Set table = terminal.ClientEscTree
    Set receive = terminal.ClientReceive
    terminal.SetClientParent host
    terminal.InitializeClass
    Expect "the profile that it has asked for", terminal.ConnectionProfile, "script"
    Expect "the settings file that it has asked for", terminal.IniFile, folder & "\settings.ini"
    Expect "open", terminal.SessionOpen, False
    terminal.OnConnection
    terminal.OnLogin
    Expect "open", terminal.SessionOpen, True
    Expect "what the host has heard", host.Heard, "INIT; "
    ReadTable
End Sub

' The number of each row of the escape table, by its pattern. A host that scans a stream makes a recogniser of it.
Sub ReadTable
    Dim row
    Set rows = CreateObject("Scripting.Dictionary")
    For row = 1 To table.EscTreeCount
        rows.Add table.EscTreeString(row), row
    Next
End Sub

Sub ReceiveText
    Dim cell
    Tell "Receives text and sequences"
    receive.ReceiveStart
    Sequence "<27>[{N};{N}H", Array("", 3, 5)
    Sequence "<ESC>[{N};{X}m", Array("", 33, "44")
    Text "Ready."
    receive.ReceiveEnd
    Expect "the third row", terminal.ScreenText(3, 3), Space(4) & "Ready." & Space(70)
    Expect "the screen's length", Len(terminal.ScreenText), 25 * 80 + 24 * 2
    Expect "the cursor", terminal.CursorX & "," & terminal.CursorY, "10,2"
    cell = terminal.CellAttributes(5, 3)
    Expect "the attributes of R", cell(0) & "," & cell(1) & "," & cell(2), "33,44,1"
    Sequence "<27>[2J", Array()
End Sub

Sub CarryOutCommands
    Dim processed
    Tell "Carries out text commands"
    terminal.ProcessCmd "IMAGE 41;3;76;14;7;harbour.png", processed
    Expect "IMAGE", processed, True
    terminal.ProcessCmd "imageclear 7"
    terminal.ProcessCmd "PASTEOK 0"
    terminal.ProcessCmd "CUTOK yes"
    Expect "pasting and copying", terminal.PasteOk & "," & terminal.CutOk, "False,False"
    terminal.Paste
    terminal.ProcessCmd "PASTEOK 1"
    terminal.ProcessCmd "CUTOK 1"
    processed = False
    terminal.ProcessCmd "IMAGE", processed
    Expect "IMAGE without anything", processed, True
    processed = False
    terminal.ProcessCmd String(1048576, "I"), processed
    terminal.ProcessCmd "CUTOK" & Chr(0) & " 0", processed
    terminal.ProcessCmd "", processed
    Expect "no commands", processed, False
    Expect "pasting and copying", terminal.PasteOk & "," & terminal.CutOk, "True,True"
End Sub

Sub SetProperties
    Tell "Sets the window's properties"
    terminal.Caption = "A script"
    Expect "the title", terminal.Caption, "A script"
    terminal.CursorX = 500
    terminal.CursorY = -3
    Expect "the cursor, as far as it goes", terminal.CursorX & "," & terminal.CursorY, "80,0"
    terminal.AutoSize = False
    terminal.ScreenFontSize = 14
    terminal.AutoSize = True
    terminal.UseMemoryDC = True
    terminal.PaintOn = False
    terminal.PaintOn = True
    terminal.Redrawscreen True
    terminal.ShowTitleBar False
    terminal.ShowTitleBar True
    Expect "flags", terminal.AutoSize & "," & terminal.UseMemoryDC & "," & terminal.PaintOn, "True,True,True"
End Sub

Sub OpenSecondScreen
    Dim window
    Tell "Lays a second screen over the first"
    Sequence "<ESC>[H", Array()
    Text "below"
    window = terminal.hWnd
    Sequence "<27><8>NS<TERM>", Array()
    Text "above"
    Expect "the second screen", RTrim(terminal.ScreenText(1, 1)), "above"
    Expect "another window", terminal.hWnd <> window, True
    Sequence "<27><8>CS<TERM>", Array()
    Expect "the first screen", RTrim(terminal.ScreenText(1, 1)), "below"
    Expect "its window", terminal.hWnd, window
End Sub

' Each mistake is an error with a number and a text, and changes nothing.
Sub MakeMistakes
    Dim value, before
    Tell "Makes mistakes"
    before = terminal.ScreenText
    On Error Resume Next
    value = terminal.ScreenText("two")
    ExpectError "no row", 13, "Type mismatch (ScreenText)"
    value = terminal.ScreenText(1E10)
    ExpectError "a very large row", 6, "Overflow (ScreenText)"
    value = terminal.ScreenText(0)
    ExpectError "a row above the screen", 9, "Subscript out of range (ScreenText)"
    value = terminal.CellAttributes(81, 1)
    ExpectError "a column outside", 9, "Subscript out of range (CellAttributes)"
    value = terminal.ScreenText(2, 1)
    ExpectError "the last row first", 5, "Invalid procedure call or argument (ScreenText)"
    terminal.ScreenFontSize = 0
    ExpectError "no font size", 380, "Invalid property value (ScreenFontSize)"
    value = "a text"
    terminal.ProcessCmd "PASTEOK 0", value
    ExpectError "a variable for no flag", 13, "Type mismatch (ProcessCmd)"
    terminal.PasteOk = "perhaps"
    ExpectError "no flag", 13, Empty
    terminal.CharsPerLine = 132
    ExpectError "to be read only", 438, Empty
    terminal.NoSuchMember
    ExpectError "no member", 438, Empty
    Sequence "<27>[{N};{N}H", Array("", 99999, 1)
    ExpectError "a row that is too large", 6, "Overflow (IClientEscTree_EscTreeProcess)"
    On Error GoTo 0
    Expect "the screen as before", terminal.ScreenText = before, True
    Expect "pasting as before", terminal.PasteOk, True
End Sub

Sub Disconnect
    Dim value
    Tell "Disconnects"
    Expect "not closed so far", CDbl(terminal.CloseDate), 0
    terminal.OnLogOut
    terminal.OnClose
    Expect "open, closed", terminal.SessionOpen & "," & terminal.SessionClosed, "False,True"
    Expect "closed in this minute", Abs(CDbl(Now) - CDbl(terminal.CloseDate)) < 1 / 1440, True
    terminal.DestroyClass
    On Error Resume Next
    value = terminal.SessionOpen
    ExpectError "no window", 91, "Object variable or With block variable not set (SessionOpen)"
    terminal.ProcessCmd "PASTEOK 0"
    ExpectError "no window for a command", 91, "Object variable or With block variable not set (ProcessCmd)"
    On Error GoTo 0
    Expect "what the host has heard in all", host.Heard, "INIT; "
End Sub

' What it is made of.

Sub Sequence(pattern, fields)
    table.EscTreeProcess rows.Item(pattern), fields
End Sub

Sub Text(characters)
    Dim at
    For at = 1 To Len(characters)
        receive.ReceiveData Asc(Mid(characters, at, 1))
    Next
End Sub

Sub Tell(what)
    WScript.Echo what & "."
End Sub

Sub Expect(what, actual, wanted)
    If CStr(actual) <> CStr(wanted) Then Differs what, actual, wanted
End Sub

' Takes the error that the last statement left.
Sub ExpectError(what, number, description)
    Dim found
    found = Err.Number & " " & Err.Description
    If IsEmpty(description) Then found = CStr(Err.Number)
    Err.Clear
    Expect what, found, Trim(number & " " & description)
End Sub

Sub Differs(what, actual, wanted)
    differences = differences + 1
    WScript.Echo "  " & what & ": " & actual & " instead of " & wanted
End Sub
