// Loses an object, so that a suite that doesn't look for leaks is noticed.

int* volatile g_pLost = nullptr;   // seen by others, as far as the compiler knows, so that nothing is optimised away

int main()
{
    g_pLost = new int(1);
    g_pLost = nullptr;
    return 0;
}
