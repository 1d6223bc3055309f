/* Conversion between UTF-8 and the two encodings that names in a Jet file have, for the
 * library and its caller. The system's own tables; nothing is opened for them. */
#ifndef TOLVEK_ICONV_H
#define TOLVEK_ICONV_H
#include <errno.h>
#include <stddef.h>
#include <string.h>
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#define ICONV_CONST

/* The code page of the side that isn't UTF-8, negative when that side is the result. */
typedef struct tolvek_iconv *iconv_t;
enum { TOLVEK_UCS2 = 1200 };

static inline int tolvek_code_page(const char *name)
{
    if (strcmp(name, "UTF-8") == 0) return CP_UTF8;
    if (strcmp(name, "UCS-2LE") == 0) return TOLVEK_UCS2;
    return strcmp(name, "CP932") == 0 || strcmp(name, "SHIFT-JIS") == 0 ? 932 : 0;
}

static inline iconv_t iconv_open(const char *to, const char *from)
{
    int target = tolvek_code_page(to), source = tolvek_code_page(from);
    if (target == CP_UTF8 && source != 0) return (iconv_t)(INT_PTR)source;
    if (source == CP_UTF8 && target != 0) return (iconv_t)(INT_PTR)(-target - 1);
    errno = EINVAL;
    return (iconv_t)-1;
}

static inline int iconv_close(iconv_t conversion)
{
    (void)conversion;
    return 0;
}

/* One character from `in`, whose size is returned; 0 if it isn't one, or isn't whole. */
static inline int tolvek_next(int page, const char *in, size_t size, wchar_t wide[2], int *units)
{
    if (page == TOLVEK_UCS2) {
        if (size < 2) return 0;
        memcpy(wide, in, 2);
        *units = 1;
        return 2;
    }
    int bytes = IsDBCSLeadByteEx((UINT)page, (BYTE)*in) ? 2 : 1;
    if ((size_t)bytes > size) return 0;
    *units = MultiByteToWideChar((UINT)page, MB_ERR_INVALID_CHARS, in, bytes, wide, 2);
    return *units > 0 ? bytes : 0;
}

/* Only towards UTF-8, the direction in which files are read. */
static inline size_t iconv(iconv_t conversion, char **in, size_t *in_left, char **out,
                           size_t *out_left)
{
    int page = (int)(INT_PTR)conversion;
    if (page <= 0) {
        errno = EINVAL;
        return (size_t)-1;
    }
    while (*in_left > 0) {
        wchar_t wide[2];
        char utf8[8];
        int units = 0;
        int taken = tolvek_next(page, *in, *in_left, wide, &units);
        int made = taken == 0 ? 0
                              : WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide, units, utf8,
                                                    sizeof utf8, NULL, NULL);
        if (made == 0) {
            errno = EILSEQ;
            return (size_t)-1;
        }
        if ((size_t)made > *out_left) {
            errno = E2BIG;
            return (size_t)-1;
        }
        memcpy(*out, utf8, (size_t)made);
        *out += made;
        *out_left -= (size_t)made;
        *in += taken;
        *in_left -= (size_t)taken;
    }
    errno = 0;
    return 0;
}
#endif
