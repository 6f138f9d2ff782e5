#pragma once

#include "foundation/packages/Component.h"

namespace tavio {

// The localised form of a Chinese source text, from TavioResLoader.Loader. Blanks around the source stay around the
// result. Failures are ignored: without the loader the translation is empty. The language is read once per process.
Text LoadResText(TextView source) noexcept;

// Loads the captions of a form through TavioFormText.FormTextLoader. `resources` is handed on if it is set, and is
// afterwards what the loader left in it. Raises Error.
Vector LoadFormResources(const Component& form, Dictionary& resources);

}  // namespace tavio
