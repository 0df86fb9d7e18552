# Installs Debian packages that are missing, and asks apt for nothing where none is. Sourced by the scripts of
# the top folder, which call:   need PACKAGE TEST...   for each, and then   install_missing.

missing=()

# PACKAGE is missed unless the command TEST... succeeds.
need() {
    local package=$1
    shift
    "$@" >/dev/null 2>&1 || missing+=("$package")
}

has_header() {
    printf '#include <%s>\n' "$1" | g++ -std=c++20 -E -x c++ - -o /dev/null
}

need_build_tools() {
    need g++ g++ --version
    need cmake cmake --version
    need ninja-build ninja --version
    need bison bison --version
    need re2c re2c --version
}

# The compiler needs none of these; norvane does.
need_norvane_libraries() {
    need libcli11-dev has_header CLI/CLI.hpp
    need libfmt-dev has_header fmt/format.h
    need nlohmann-json3-dev has_header nlohmann/json.hpp
}

need_test_libraries() {
    need libgtest-dev has_header gtest/gtest.h
    need libbenchmark-dev has_header benchmark/benchmark.h
    need python3 python3 --version
}

# A clang that links libFuzzer.
has_fuzzer() {
    printf 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }\n' |
        clang++ -fsanitize=fuzzer,address -x c++ - -o /dev/null >/dev/null 2>&1
}

need_fuzzer() {
    need clang has_fuzzer
    need libclang-rt-14-dev has_fuzzer
}

need_analyzers() {
    need clang-tidy clang-tidy --version
    need cppcheck cppcheck --version
}

install_missing() {
    [ ${#missing[@]} -gt 0 ] || return 0
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null 2>&1; then
            echo "Missing packages, and no right to install them: ${missing[*]}" >&2
            echo "Please install them (as root: apt-get install ${missing[*]}) and start again." >&2
            exit 1
        fi
        root=(sudo)
    fi
    if ! command -v apt-get >/dev/null 2>&1; then
        echo "Missing packages, and no apt-get to install them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing: ${missing[*]}"
    if ! { "${root[@]}" apt-get update -qq &&
           "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
               apt-get install -y -qq --no-install-recommends "${missing[@]}"; }
    then
        echo "These packages could not be installed: ${missing[*]}" >&2
        exit 1
    fi
    missing=()
}
