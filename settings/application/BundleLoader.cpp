#include "settings/application/BundleLoader.h"

#include <dlfcn.h>
#include <utility>

#include "platform/foundation/files/FileSystem.h"
#include "platform/foundation/objects/Process.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Exception.h"
#include "platform/preferences/BundleInterface.h"

namespace settings {
namespace {

using platform::BundleRegisterFunction;

LoadedBundle notLoaded(std::string problem) {
  LoadedBundle result;
  result.problem = std::move(problem);
  return result;
}

std::string lastLoaderError() {
  const char* text = ::dlerror();
  return text ? text : "unknown error";
}

// Returns the text under a key of Info.plist, or sets a problem that names the key.
std::optional<std::string> infoText(const platform::Dictionary& info, const std::string& infoPath,
                                    std::string_view key, std::string& problem) {
  const platform::Value value = info.valueForKey(key);
  auto text = value.text();
  if (text && !text->empty()) return text;
  problem = infoPath + ": " + std::string(key) + " is " +
            (value.isNone() ? "missing" : "empty or not a string") +
            ". Set it to a name, or reinstall the bundle.";
  return std::nullopt;
}

struct OpenedCode {
  std::shared_ptr<void> code;
  std::string problem;
};

OpenedCode openCode(platform::FileSystem& files, const std::string& path) {
  if (!files.fileExists(path)) {
    return {nullptr, path + ": there is no such file. Reinstall the bundle."};
  }
  const auto host = files.hostPath(path);
  if (!host) return {nullptr, path + ": a link in the path is broken."};
  void* handle = ::dlopen(host->c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) {
    return {nullptr, path + ": cannot be loaded: " + lastLoaderError() + ". Reinstall the bundle."};
  }
  return {std::shared_ptr<void>(handle, [](void* opened) { ::dlclose(opened); }), {}};
}

std::string registerProblem(int result) {
  switch (result) {
    case platform::bundleRegistered:
      return {};
    case platform::bundleInterfaceDiffers:
      return "was built for another version of the application (its interface is not version " +
             std::to_string(platform::bundleInterfaceVersion) +
             "). Build both from the same checkout.";
    case platform::bundleClassRefused:
      return "one of its classes could not be registered: the name is taken or the base is "
             "unknown.";
    default:
      return "its registration failed with status " + std::to_string(result) + ".";
  }
}

std::string registerClasses(platform::Process& process, void* code, const std::string& path) {
  void* symbol = ::dlsym(code, platform::bundleRegisterSymbol);
  if (!symbol) {
    return path + ": has no function " + platform::bundleRegisterSymbol +
           ", so it is not a settings bundle.";
  }
  const auto function = reinterpret_cast<BundleRegisterFunction>(symbol);
  const std::string problem =
      registerProblem(function(&process.classes(), platform::bundleInterfaceVersion));
  return problem.empty() ? problem : path + ": " + problem;
}

}  // namespace

LoadedBundle loadBundle(platform::Process& process, std::string_view path) {
  const std::string folder(path);
  const std::string infoPath = folder + "/Info.plist";
  std::string problem;
  const auto info = platform::dictionaryWithContentsOfFile(infoPath, &problem);
  if (!info) return notLoaded(problem + ". Reinstall the bundle.");

  const auto executable = infoText(*info, infoPath, "CFBundleExecutable", problem);
  if (!executable) return notLoaded(std::move(problem));
  if (executable->find('/') != std::string::npos) {
    return notLoaded(infoPath + ": CFBundleExecutable is \"" + *executable +
                     "\"; it must name a file of the bundle, without a slash.");
  }
  auto principal = infoText(*info, infoPath, "NSPrincipalClass", problem);
  if (!principal) return notLoaded(std::move(problem));

  const std::string codePath = folder + "/" + *executable;
  auto opened = openCode(process.service<platform::FileSystem>(), codePath);
  if (!opened.code) return notLoaded(std::move(opened.problem));
  problem = registerClasses(process, opened.code.get(), codePath);
  if (problem.empty() && !process.classes().find(*principal)) {
    problem = infoPath + ": NSPrincipalClass is \"" + *principal +
              "\", but the bundle has no class of that name.";
  }
  LoadedBundle result;
  result.code = std::move(opened.code);
  result.principalClass = std::move(*principal);
  result.title = info->valueForKey("CFBundleDisplayName").text().value_or("");
  if (!problem.empty()) result.problem = std::move(problem);
  return result;
}

}  // namespace settings
