#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "htmllabel/layout/PictureSource.h"

namespace kavrelon {

/// The pictures of a document, as the container supplied them: one for each source, null where it had none.
class LabelPictures final : public PictureSource {
  public:
    bool asked(std::string_view source) const { return pictures_.contains(source); }
    void keep(std::string source, std::shared_ptr<const Picture> picture) {
        pictures_.insert_or_assign(std::move(source), std::move(picture));
    }
    void clear() { pictures_.clear(); }

    const Picture* picture(std::string_view source) override {
        const auto found = pictures_.find(source);
        return found == pictures_.end() ? nullptr : found->second.get();
    }

  private:
    std::map<std::string, std::shared_ptr<const Picture>, std::less<>> pictures_;
};

}  // namespace kavrelon
