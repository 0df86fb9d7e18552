# What the checks of a report's page share. Sourced.

# Exits with the status of a test that was not run where there is no Chromium.
find_chromium() {
    local name
    for name in chromium chromium-browser google-chrome; do
        browser=$(command -v "$name") && return
    done
    echo "not run: Chromium is not installed"
    exit 77
}

# The page as it is once its scripts have run.   dump_page FILE WIDTH ARGUMENT...
dump_page() {
    local page=$1 width=$2
    shift 2
    rm -rf "$scratch/profile"
    timeout -k 5 120 "$browser" --headless=new --no-sandbox --disable-gpu --disable-dev-shm-usage --no-first-run \
        --user-data-dir="$scratch/profile" --window-size="$width,900" "$@" --dump-dom "file://$page" 2>"$scratch/browser.log"
}

# The page with a script in front of everything that notes faults, and a check behind everything.
#   add_check PAGE CHECK.js > CHECKED
add_check() {
    sed -e 's|<head>|<head><script>window.faults = []; addEventListener("error", (e) => faults.push(e.message)); addEventListener("securitypolicyviolation", (e) => faults.push(e.violatedDirective));</script>|' \
        -e '/^<\/body>$/,$d' "$1"
    echo '<script>'
    cat "$2"
    echo '</script></body></html>'
}

# What the check wrote.
get_result() {
    sed -n '/<pre id="result">/,/<\/pre>/p' | sed 's/.*<pre id="result">//; s/<\/pre>.*//'
}
