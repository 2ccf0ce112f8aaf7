#pragma once

// Parts of registerFoundationClasses, each in its own file.
namespace platform {

class ClassRegistry;

// Registers the addresses, requests, responses, errors and tasks of the URL session.
void registerURLClasses(ClassRegistry& registry);

}  // namespace platform
