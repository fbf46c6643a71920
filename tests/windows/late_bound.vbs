' The plug-in and the label as a script sees them: created by name, every member found by its name.
' Prints "as expected" at its end, unless anything differs or an error ends it early.
Option Explicit

Dim plugIn, label, table, row, patterns, fileVersion, failures
failures = 0

Sub Expect(what, actual, wanted)
    If CStr(actual) <> CStr(wanted) Then
        WScript.Echo what & ": " & actual & " instead of " & wanted
        failures = failures + 1
    End If
End Sub

Sub ExpectError(what, number, description)
    Expect what, Err.Number & " " & Err.Description & " <" & Err.Source & ">", _
        number & " " & description & " <kavrelon.clsTerminal>"
    Err.Clear
End Sub

Sub NoteOutcome
    outcomes = outcomes & Err.Number & " "
    Err.Clear
End Sub

Set plugIn = CreateObject("kavrelon.clsTerminal")
fileVersion = CreateObject("Scripting.FileSystemObject").GetFileVersion(WScript.Arguments(0))
Expect "id", plugIn.PlugInID, "TERM"
Expect "description", plugIn.PlugInDesc, "Terminal Window"
Expect "version", plugIn.PlugInVersion & ".0", fileVersion
plugIn.Enabled = False
Expect "enabled", plugIn.Enabled, True

Set table = plugIn.ClientEscTree
Expect "rows", table.EscTreeCount, 44
For row = 1 To table.EscTreeCount
    If Left(table.EscTreeString(row), 1) = "<" And table.EscTreeDesc(row) <> "" Then patterns = patterns & "."
    Expect "flag " & row, table.EscTreeCreateFlag(row), 0
Next
Expect "patterns", Len(patterns), 44
Expect "first row", table.EscTreeString(1) & " " & table.EscTreeDesc(1), "<ESC>[H Home"
Expect "last row", table.EscTreeString(44) & " " & table.EscTreeDesc(44), "<31>REMOTE CLEAR<31> remote Clear"

' A script's array is one of variants. Without a window, taking it is as far as a sequence gets.
Const NoObject = "Object variable or With block variable not set (IClientEscTree_EscTreeProcess)"
On Error Resume Next
row = table.EscTreeString(500)
ExpectError "no such row", 9, "Subscript out of range (IClientEscTree_EscTreeString)"
table.EscTreeProcess 2, Array("", 10, "20")
ExpectError "array", 91, NoObject
row = Array("", 10, "20")
table.EscTreeProcess 2, row
ExpectError "array in a variable", 91, NoObject
table.EscTreeProcess 2, "10;20"
ExpectError "no array", 13, "Type mismatch (IClientEscTree_EscTreeProcess)"
table.EscTreeProcess "two", Array()
Expect "no number", Err.Number, 13
Err.Clear
On Error GoTo 0

' Without elements: a row that does nothing, one that comes as far as the window, one that needs fields, and
' one that is not there.
Dim undimensioned(), outcomes
On Error Resume Next
For Each row In Array(12, 1, 38, 101)
    table.EscTreeProcess row
    NoteOutcome
    table.EscTreeProcess row, undimensioned
    NoteOutcome
    table.EscTreeProcess row, Empty
    NoteOutcome
    table.EscTreeProcess row, Null
    NoteOutcome
Next
On Error GoTo 0
Expect "no arrays", outcomes, "0 0 0 0 91 91 91 91 9 9 9 9 9 9 9 9 "

plugIn.DestroyClass

' The label, without a form.
Set label = CreateObject("kavrelon.HTMLLabel")
Expect "label", label.Version & " " & label.DefaultFontName & " " & label.BorderStyle, "0.3.0 Arial 0"
label.BackColor = &H8000000F
Expect "system colour", label.BackColor, -2147483633
label.BackColor = CDbl(-2147483643)
Expect "system colour as another type", label.BackColor, -2147483643
label.BackColor = &HFF
label.EnableAnchors = True
label.DefaultFontSize = 12.5
label.DocumentHTML = "<title>Help</title><body>text"
Expect "set", label.BackColor & " " & label.EnableAnchors & " " & label.DefaultFontSize, "255 True 12.5"
Expect "title", label.DocumentTitle, "Help"
On Error Resume Next
label.Appearance = 2
Expect "no choice", Err.Number & " " & Err.Description & " <" & Err.Source & ">", _
    "380 Invalid property value (Appearance) <kavrelon.HTMLLabel>"
On Error GoTo 0

If failures = 0 Then WScript.Echo "as expected"
