#pragma once

#include <string>
#include <string_view>

// Puts the characters in the place of the entities that the system knows, each in the spellings of its
// table and in no other; any other entity stays as it stands. One pass: what was decoded isn't looked at
// again.
std::string DecodeEntities(std::string_view text);

// Appends the text with entities in place of what markup would be taken for, and of those bytes above 0x7F
// that have an entity. A "&" in front of "#" stays, so that numeric references in the text survive. The
// quotation mark is encoded in attribute values alone.
enum class XmlPlace { ElementText, AttributeValue };
void AppendEncoded(std::string& output, std::string_view text, XmlPlace place);
