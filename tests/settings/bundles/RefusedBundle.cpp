// A bundle that does not register its classes. REGISTER_RESULT is the reason.

#include "platform/preferences/BundleInterface.h"

int zentrova_bundle_register(platform::ClassRegistry* /*registry*/, unsigned /*interfaceVersion*/) {
  return REGISTER_RESULT;
}
