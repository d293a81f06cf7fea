#include "ai/ClaudeProvider.h"
#include "ai/OpenAIProvider.h"
#include "app/Vendors.h"

namespace quilmora {

Vendors programVendors() {
  return {ClaudeProvider::publicHost(), OpenAIProvider::publicHost(), std::nullopt};
}

}  // namespace quilmora
