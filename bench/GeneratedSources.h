#pragma once

#include <string>
#include <vector>

// Structured Text of a chosen size, each kind for one cost that must grow linearly.
std::string MakeGlobalsAndPous(int globals, int pous);       // a POU must not walk the globals again
std::string MakeArrayInitialiser(int elements);              // half written out, half repeated
std::string MakeCaseLabels(int labels);                      // single values and ranges, an arm for each
std::string MakeStatements(int statements);                  // one POU, assignments and IFs
std::string MakeSum(int terms);                              // one expression that nests to the left
std::string MakeCalls(int functions);                        // a program that calls each of them
std::string MakeNestedStructures(int levels);                // each holds the one before
std::string MakeFbParameters(int members);                   // one call that names every member
std::string MakeVariables(int variables);                    // of one POU
std::string MakeForms(int forms);                            // one overloaded function, and a call of each form; at most 65,536
std::vector<std::string> MakeFiles(int files);               // a function in each, and a program behind them
