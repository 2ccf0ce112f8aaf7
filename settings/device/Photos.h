#pragma once

namespace settings {

class TreeWriter;

// Adds the photo library of a new device tree: landscapes as JPEG, a drawing as PNG.
void addPhotos(TreeWriter& writer);

// Adds the avatar of the maker's profile to the Application Support folder.
void addAvatar(TreeWriter& writer);

}  // namespace settings
