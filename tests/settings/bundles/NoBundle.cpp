// A shared object that is no settings bundle.

extern "C" int zentrova_no_bundle() {
  return 0;
}
