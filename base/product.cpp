#include "base/product.h"

const std::string_view kProductSite = CORVANE_PRODUCT_SITE;
const std::string_view kCreatorTag = "Corvane Map 1.21 (" CORVANE_PRODUCT_SITE ")";
