# encode FILE: base64 in the compiler's own bit order, low bits first, without line breaks.
encode()
{
    od -An -v -tu1 "$1" | awk '
        function put(value) { printf "%s", substr(alphabet, value + 1, 1) }
        BEGIN { alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/" }
        { for (i = 1; i <= NF; ++i) byte[count++] = $i }
        END {
            for (i = 0; i < count; i += 3) {
                a = byte[i]; b = byte[i + 1] + 0; c = byte[i + 2] + 0; left = count - i
                put(a % 64)
                put(int(a / 64) + b * 4 % 64)
                if (left > 1) put(int(b / 16) + c * 16 % 64); else printf "="
                if (left > 2) put(int(c / 4)); else printf "="
            }
        }'
}
