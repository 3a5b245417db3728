/* Takes a line apart into words and puts it together in other ways, in C. */

#include "ZORDuxStrings.h"

#include <stdio.h>
#include <stdlib.h>

int main(void)
{
    const char* const line = "plate  bracket bolt";
    for (int number = 1; wordlen(line, number) > 0; ++number) {
        char* const each = word(line, (unsigned)number);
        printf("word %d is %s\n", number, each);
        free(each);
    }
    printf("bolt is word %d\n", wordpos("bolt", line, 1));

    char* const last = subword(line, 2, 2);
    char* const padded = pad(last, 15, '.');
    printf("%s at %d\n", padded, pos("bolt", padded, 1));
    free(padded);
    free(last);

    setwsep(','); /* for the whole process */
    char* const second = word("plate,large bracket", 2);
    printf("%s\n", second);
    free(second);
    return 0;
}
