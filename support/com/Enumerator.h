#pragma once

#include <unknwn.h>

#include <utility>
#include <vector>

#include "support/com/ComCall.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// A COM enumerator over a list that it copied when it was made. `copy` turns an entry into the item that a
/// caller receives, with a reference for the caller.
template <class Interface, class Entry, class Item, Item (*copy)(const Entry&)>
class Enumerator final : public Implements<Interface> {
  public:
    explicit Enumerator(std::vector<Entry> entries, std::size_t next = 0)
        : entries_(std::move(entries)), next_(next) {}

    STDMETHODIMP Next(ULONG wanted, Item* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && wanted != 1)) return E_POINTER;
        ULONG given = 0;
        for (; given < wanted && next_ < entries_.size(); ++given) items[given] = copy(entries_[next_++]);
        if (fetched != nullptr) *fetched = given;
        return given == wanted ? S_OK : S_FALSE;
    }

    STDMETHODIMP Skip(ULONG count) override {
        const std::size_t left = entries_.size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }

    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }

    STDMETHODIMP Clone(Interface** twin) override {
        return comCall({"Enumerator", "Clone", __uuidof(Interface)},
                       [&] { out(twin) = new Enumerator(entries_, next_); });
    }

  private:
    std::vector<Entry> entries_;
    std::size_t next_;
};

}  // namespace kavrelon
