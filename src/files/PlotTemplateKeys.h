#pragma once

#include <span>
#include <string>
#include <string_view>

#include "files/PlotTemplateKinds.h"

namespace quorvex {

// The plot templates of a kind of plot. Reading, writing, prompts and the manual go by its keys.
struct PlotTemplateFormat {
  std::string Extension;       // without its dot
  std::string Filter;          // of a file dialog
  std::string Setting;         // names the template that new plots get
  std::string OtherExtension;  // of the templates that are refused, with what is said of them
  std::string Mismatch;
  std::vector<TemplateKey> Keys;  // in the order in which they are written

  // By its name or its twin's, in lower case; null where there is none.
  const TemplateKey* Find(std::string_view key) const;
  // What can be saved or left out, in the order of the keys.
  std::vector<std::string> Groups() const;
};

const PlotTemplateFormat& TemplateFormat2D();
const PlotTemplateFormat& TemplateFormat3D();
const PlotTemplateFormat& TemplateFormatOf(const PlotPage& plot);

}  // namespace quorvex
