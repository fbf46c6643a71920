#pragma once

#include <windows.h>

#include "terminal/FontFace.h"

namespace kavrelon {

/// The faces that can be had on a device context.
class GdiFaces final : public InstalledFaces {
  public:
    /// The context must outlive this object. What is selected into it is put back.
    explicit GdiFaces(HDC context) : context_(context) {}

    bool has(const char* name) override;
    FaceFacts factsOf(const FontChoice& choice) override;
    /// The platform could not make one of the fonts that were asked about: what was told of it is not true.
    bool failed() const { return failed_; }

  private:
    HDC context_;
    bool failed_ = false;
};

/// The description that realises a face. A positive height is a cell's, a negative one a character's.
LOGFONTA describe(const FontFace& face, int height);

}  // namespace kavrelon
