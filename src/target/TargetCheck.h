#pragma once

#include <string>

class CXmlDocument;

// The path of the first node that every target description must have and this one lacks, parts
// separated by "\"; empty if it has all of them.
std::string FindMissingTargetNode(CXmlDocument& target);
