#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kavrelon.h"
#include "quillabor.h"
#include "recognizer/EscapeRecognizer.h"
#include "recognizer/EscapeSink.h"
#include "recognizer/EscapeTree.h"
#include "samplehost/com/ModuleFile.h"
#include "samplehost/com/ParentObject.h"
#include "support/com/ComPtr.h"

namespace kavrelon {

/// Tells the program what becomes of the stream that it feeds.
class PlugInObserver {
  public:
    virtual ~PlugInObserver() = default;

    /// A sequence that the plug-in's table does not have; it was dropped.
    virtual void unmatched(std::span<const std::uint8_t> bytes) = 0;
    /// A call of the plug-in failed; the session goes on. `what` is a sentence for the log.
    virtual void failed(const std::string& what) = 0;
    /// A sequence has given the screen this size.
    virtual void screenSized(int columns, int rows) = 0;
    /// A sequence is about to open another screen over the current one.
    virtual void screenCovered() = 0;
};

/// A plug-in as a host drives it, from initialisation to its end: lifecycle, escape tree and received data.
class PlugIn final : private EscapeSink {
  public:
    /// Initialises the plug-in and builds the escape tree from its table. Throws ComFailure, and
    /// std::invalid_argument for a table that no tree can be built from.
    PlugIn(ComPtr<IClientMain> main, ComPtr<ParentObject> parent, PlugInObserver& observer);
    /// Closes the session if it is open, and ends the plug-in. Must not run during one of the plug-in's calls
    /// of the parent object.
    ~PlugIn() override;
    PlugIn(const PlugIn&) = delete;
    PlugIn& operator=(const PlugIn&) = delete;

    /// Id, description and version, for the log.
    std::string identity() const;
    /// The library that the plug-in is in.
    ModuleFile file() const { return ModuleFile::ofObject(*main_); }
    /// Tells the plug-in that the connection is made, on which it shows its window. Throws ComFailure.
    void open();
    /// From now on the texts in sequences are of the same characters as what the screen shows. Without it
    /// they are bytes of the ANSI code page.
    void takeTextsAsShown() { textsAsShown_ = true; }
    /// Gives the plug-in a block of received bytes in pieces, up to an empty one; a sequence may continue in
    /// the next piece or block. At the end the plug-in lets window messages through, and may call the parent
    /// object.
    void receive(const std::function<std::span<const std::uint8_t>()>& nextPiece);
    /// Forgets an unfinished sequence, which would swallow what comes next when it does not continue it.
    void interrupt() { recognizer_->reset(); }
    /// The current terminal window; null when the plug-in is another one than the terminal.
    ComPtr<ITerminalWindow> window() const { return main_.query<ITerminalWindow>(); }
    /// Has the plug-in carry out a text command. One that has none reports a failure.
    void processCommand(std::string_view text);
    /// Gives the screen a size as the remote system would. False when the plug-in has no such sequence.
    bool sizeScreen(int columns, int rows);

  private:
    void plain(std::span<const std::uint8_t> bytes) override;
    void sequence(std::int16_t index, std::span<const std::string_view> fields) override;
    void unmatched(std::span<const std::uint8_t> bytes) override { observer_.unmatched(bytes); }

    void initialise();
    void readTable();
    void attempt(HRESULT result, const char* what);
    void noteSize(std::span<const std::string_view> fields);

    ComPtr<IClientMain> main_;
    ComPtr<ParentObject> parent_;
    ComPtr<IClientReceive> receive_;
    ComPtr<IClientEscTree> escTree_;
    PlugInObserver& observer_;
    std::optional<EscapeRecognizer> recognizer_;
    std::vector<std::string> descriptions_;
    std::int16_t sizeRow_ = 0;
    std::int16_t coverRow_ = 0;
    bool textsAsShown_ = false;
    bool open_ = false;
};

}  // namespace kavrelon
