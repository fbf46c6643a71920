#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "htmllabel/document/TagTable.h"

namespace kavrelon {

/// The open tags of one sort, each with the state that it brought.
///
/// A closer ends the innermost tag of its own kind and all that was opened inside it; without such a tag it
/// does nothing. A table or cell is a scope: closers do not reach out of it. Each call takes constant time on
/// average, however deep the nesting.
template <class State>
class TagStack {
  public:
    explicit TagStack(State base) { enterScope(base); }

    void enterScope(State base) {
        scopes_.push_back(tags_.size());
        open(TAG_TEXT, base);
    }
    void leaveScope() {
        while (tags_.size() > scopes_.back()) drop();
        scopes_.pop_back();
    }
    void open(TagType code, State state) {
        tags_.push_back({state, code, innermost_[static_cast<std::size_t>(code)]});
        innermost_[static_cast<std::size_t>(code)] = tags_.size();
    }
    /// Takes the opener's code. True when such a tag was open.
    bool close(TagType code) {
        const std::size_t count = innermost_[static_cast<std::size_t>(code)];
        if (count <= scopes_.back() + 1) return false;
        while (tags_.size() >= count) drop();
        return true;
    }
    const State& top() const { return tags_.back().state; }

  private:
    struct Tag {
        State state;
        TagType code;
        std::size_t before;  // what `innermost_` held
    };
    void drop() {
        innermost_[static_cast<std::size_t>(tags_.back().code)] = tags_.back().before;
        tags_.pop_back();
    }

    std::vector<Tag> tags_;
    std::vector<std::size_t> scopes_;  // where each begins
    // The number of tags up to the innermost one of each code; 0 when there is none.
    std::array<std::size_t, kTagCodes> innermost_{};
};

}  // namespace kavrelon
