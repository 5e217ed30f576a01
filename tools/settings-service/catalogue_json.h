// The text of catalogue.json; the build makes its definition.
#pragma once

#include <string_view>

namespace tool::service {

extern const std::string_view kCatalogueJson;

}  // namespace tool::service
