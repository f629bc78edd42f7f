// QuandaTimeProviderRequiring: an object that needs a time provider for its whole life and is
// given one, and hands it out, through one read-write property, timeProvider.
//
// The provider is shared: the object keeps it alive, and whoever set it (a test pinning a mock
// provider's clocks, say) can keep using the same provider.
#pragma once

#include <memory>

#include "Quanda/QuandaTimeProviding.h"

class QuandaTimeProviderRequiring {
 public:
  virtual ~QuandaTimeProviderRequiring() = default;

  virtual std::shared_ptr<QuandaTimeProviding> timeProvider() const = 0;
  virtual void setTimeProvider(std::shared_ptr<QuandaTimeProviding> timeProvider) = 0;

 protected:
  QuandaTimeProviderRequiring() = default;
  QuandaTimeProviderRequiring(const QuandaTimeProviderRequiring&) = default;
  QuandaTimeProviderRequiring& operator=(const QuandaTimeProviderRequiring&) = default;
};
