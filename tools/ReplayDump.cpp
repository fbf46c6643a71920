#include "tools/ReplayDump.h"

#include <algorithm>
#include <cstdio>

#include "headless/HeadlessHelpWindow.h"
#include "headless/HeadlessWindow.h"
#include "terminal/frmTerm.h"
#include "tools/JsonLine.h"

namespace kavrelon {
namespace {

std::string colourText(Colour colour) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%06X", static_cast<unsigned>(colour));
    return digits;
}

std::string styleText(const Pen& pen) {
    std::string letters;
    if (pen.italic) letters += 'i';
    if (pen.underline) letters += 'u';
    return letters;
}

/// Writes a row's cells as runs of equal values: [count, ...value...] each.
template <class Value, class Get, class Write>
void writeRuns(JsonLine& json, int cells, Get get, Write write) {
    json.beginArray();
    for (int cell = 0; cell < cells;) {
        const Value value = get(cell);
        int end = cell + 1;
        while (end < cells && get(end) == value) ++end;
        json.beginArray().value(std::int64_t{end - cell});
        write(value);
        json.endArray();
        cell = end;
    }
    json.endArray();
}

template <class WriteRow>
void writeRows(JsonLine& json, const char* key, int rows, WriteRow writeRow) {
    json.key(key).beginArray();
    for (int row = 0; row < rows; ++row) writeRow(row);
    json.endArray();
}

/// How many rows can be dumped: the screen's height, within what is stored.
int storedRows(const Screen& screen) {
    return std::clamp<int>(screen.LinesPerPage(), 0, kMaxScreen);
}

void writeStoredRows(JsonLine& json, const Screen& screen) {
    // The pending column is stored after the last shown one.
    const int cells = std::clamp<int>(screen.CharsPerLine() + 1, 0, kMaxScreen);
    const auto line = [&](int row) -> const ScreenLine& { return screen.buffer().record(row + 1); };
    writeRows(json, "rows", storedRows(screen), [&](int row) {
        std::string text;
        for (int cell = 1; cell <= cells; ++cell) text += static_cast<char>(line(row).Chars(cell));
        json.value(text);
    });
    writeRows(json, "attributes", storedRows(screen), [&](int row) {
        writeRuns<CellAttr>(
            json, cells, [&](int cell) { return line(row).Attrs(cell + 1); },
            [&](CellAttr attr) {
                json.value(std::int64_t{attr.Fore})
                    .value(std::int64_t{attr.Back})
                    .value(std::int64_t{attr.Mode});
            });
    });
}

void writeTexts(JsonLine& json, const std::vector<std::string>& texts) {
    json.beginArray();
    for (const std::string& text : texts) json.value(text);
    json.endArray();
}

void writeNumber(JsonLine& json, const char* key, int number) {
    json.key(key).value(std::int64_t{number});
}

void writeBox(JsonLine& json, int slot, const frmHelp& box, const HeadlessHelpWindow& window) {
    json.beginObject();
    writeNumber(json, "index", slot);
    writeNumber(json, "top", box.BoxTop());
    writeNumber(json, "left", box.BoxLeft());
    writeNumber(json, "width", box.BoxWidth());
    writeNumber(json, "height", box.BoxHeight());
    const Rect place = window.rectangle();
    json.key("rectangle").beginArray();
    for (const int number : {place.left, place.top, place.width(), place.height()}) {
        json.value(std::int64_t{number});
    }
    json.endArray();
    const HTMLLabel& label = *window.label();
    json.key("document").value(label.DocumentHTML());
    json.key("font").beginArray().value(label.DefaultFontName()).value(label.DefaultFontSize()).endArray();
    json.key("lines");
    writeTexts(json, window.labelWindow()->textLines());
    json.endObject();
}

void writeItems(JsonLine& json, const HostMenus::Items& items) {
    json.beginArray();
    for (const HostMenus::Item& item : items.shown) {
        json.beginObject().key("caption").value(item.caption).key("enabled").value(item.enabled).endObject();
    }
    json.endArray();
}

}  // namespace

std::string stateLine(const frmTerm& window, int index) {
    const Screen& screen = window.screen();
    const CellAttr attr = screen.rendition().CurAttr();
    JsonLine json;
    json.beginObject().key("window").value(std::int64_t{index});
    json.key("columns").value(std::int64_t{screen.CharsPerLine()});
    json.key("lines").value(std::int64_t{screen.LinesPerPage()});
    json.key("cursorX")
        .value(std::int64_t{screen.CursorX()})
        .key("cursorY")
        .value(std::int64_t{screen.CursorY()});
    json.key("fore").value(std::int64_t{attr.Fore}).key("back").value(std::int64_t{attr.Back});
    json.key("mode").value(std::int64_t{attr.Mode});
    json.key("foreColour").value(colourText(screen.rendition().ForeColour()));
    json.key("backColour").value(colourText(screen.rendition().BackColour()));
    json.key("dirty").value(screen.ScreenDirty()).key("cursorDrawn").value(screen.cursorDrawn());
    json.key("helpBoxes").beginArray();
    for (const int slot : window.HelpBoxes().openSlots()) json.value(std::int64_t{slot});
    json.endArray();
    writeStoredRows(json, screen);
    return json.endObject().text();
}

std::string screenLine(const frmTerm& window, const HeadlessWindow& shown) {
    const int rows = storedRows(window.screen());
    const int columns = std::clamp<int>(window.screen().CharsPerLine(), 0, kMaxScreen);
    JsonLine json;
    json.beginObject();
    writeRows(json, "rows", rows, [&](int row) {
        std::string text;
        for (int column = 0; column < columns; ++column) {
            text += static_cast<char>(shown.cells().shown(column, row).ch);
        }
        json.value(text);
    });
    const auto writePens = [&](const char* key, auto textOf) {
        writeRows(json, key, rows, [&](int row) {
            writeRuns<std::string>(
                json, columns, [&](int column) { return textOf(shown.cells().shown(column, row).pen); },
                [&](const std::string& text) { json.value(text); });
        });
    };
    writePens("text", [](const Pen& pen) { return colourText(pen.text); });
    writePens("back", [](const Pen& pen) { return colourText(pen.back); });
    writePens("style", styleText);
    json.key("inverted").beginArray();
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (!shown.cells().shown(column, row).inverted) continue;
            json.beginArray().value(std::int64_t{column}).value(std::int64_t{row}).endArray();
        }
    }
    return json.endArray().endObject().text();
}

std::string boxesLine(const HelpBoxes& boxes, const HeadlessDesktop& desktop) {
    JsonLine json;
    json.beginObject().key("boxes").beginArray();
    for (const int slot : boxes.openSlots()) {
        const frmHelp& box = *boxes.at(slot);
        if (const HeadlessHelpWindow* const window = windowOf(desktop, box))
            writeBox(json, slot, box, *window);
    }
    return json.endArray().endObject().text();
}

std::string picturesLine(const Pictures& pictures) {
    JsonLine json;
    json.beginObject().key("pictures").beginArray();
    for (const auto& [number, picture] : pictures.all()) {
        json.beginObject();
        writeNumber(json, "number", number);
        writeNumber(json, "left", picture.place.left);
        writeNumber(json, "top", picture.place.top);
        writeNumber(json, "right", picture.place.right);
        writeNumber(json, "bottom", picture.place.bottom);
        json.endObject();
    }
    return json.endArray().endObject().text();
}

std::string settingsLine(const std::vector<std::string>& lines) {
    JsonLine json;
    json.beginObject().key("settings");
    writeTexts(json, lines);
    return json.endObject().text();
}

std::string menusLine(const HostMenus& menus) {
    JsonLine json;
    json.beginObject().key("knowledgeBase");
    writeItems(json, menus.mnKnowledgeBaseLink());
    json.key("knowledgeBaseEntries").value(static_cast<std::int64_t>(menus.knowledgeBase().size()));
    json.key("remoteEnabled").value(menus.mnuRemoteEnabled()).key("remote");
    writeItems(json, menus.mnuRemoteConnection());
    json.key("remoteEntries").value(static_cast<std::int64_t>(menus.remote().size()));
    return json.endObject().text();
}

}  // namespace kavrelon
