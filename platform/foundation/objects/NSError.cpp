#include "platform/foundation/objects/NSError.h"

#include "platform/foundation/log/LogFormat.h"

namespace platform {

std::shared_ptr<NSError> NSError::errorWithDomain(std::string_view domain, std::int64_t code,
                                                  std::string_view localizedDescription) {
  auto error = make<NSError>();
  error->_domain = domain;
  error->_code = code;
  error->_localizedDescription = localizedDescription;
  return error;
}

std::string NSError::description() const {
  return formatString("Error Domain=%@ Code=%li \"%@\" UserInfo={NSLocalizedDescription=%@}",
                      {_domain, _code, _localizedDescription, _localizedDescription});
}

}  // namespace platform
