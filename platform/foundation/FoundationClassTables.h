#pragma once

// The parts of registerFoundationClasses that have files of their own.
namespace platform {

class ClassRegistry;

// Addresses, requests, responses, errors and tasks of the URL session.
void registerURLClasses(ClassRegistry& registry);

}  // namespace platform
