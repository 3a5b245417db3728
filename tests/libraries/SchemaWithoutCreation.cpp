// A library that is no schema: its function has another name.

extern "C" __attribute__((visibility("default"))) void* fctCreateOther()
{
    return nullptr;
}

// Found, and yet null.
asm(".globl fctCreateNull\n.set fctCreateNull, 0");
