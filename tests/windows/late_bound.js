// The plug-in as a JScript program sees it, as far as that differs: its words for no array, null and undefined.
// Prints "as expected" at its end; not so when anything differs, or when an error ends it early.
var failures = 0;

function expect(what, actual, wanted) {
    if (String(actual) !== String(wanted)) {
        WScript.Echo(what + ": " + actual + " instead of " + wanted);
        ++failures;
    }
}

// The number of the error that a row ends in, 0 for none.
function outcome(action) {
    try {
        action();
    } catch (error) {
        return error.number & 0xffff;
    }
    return 0;
}

var plugIn = new ActiveXObject("kavrelon.clsTerminal");
var table = plugIn.ClientEscTree;
plugIn.SetClientParent({
    ParentConnectionProfile: function () { return "profile"; },
    ParentIniFile: function () { return "Z:\\nowhere\\kavrelon.ini"; }
});
plugIn.InitializeClass();

// Rows: home, cursor position, cursor up, set attribute; and one that is not there.
var rows = [1, 2, 4, 30, 101];
var wanted = "0,9,0,0,9";
var arrays = {
    "null": function (row) { table.EscTreeProcess(row, null); },
    "undefined": function (row) { table.EscTreeProcess(row, undefined); },
    "left out": function (row) { table.EscTreeProcess(row); }
};
for (var what in arrays) {
    var outcomes = [];
    for (var i = 0; i < rows.length; ++i) {
        outcomes.push(outcome(function () { arrays[what](rows[i]); }));
    }
    expect(what, outcomes.join(), wanted);
}
expect("an object", outcome(function () { table.EscTreeProcess(1, [1, 2]); }), 13);

plugIn.DestroyClass();

if (failures === 0) WScript.Echo("as expected");
