// A shared object that is not a settings bundle.

extern "C" int zentrova_no_bundle() {
  return 0;
}
