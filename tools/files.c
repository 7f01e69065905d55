/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

#include "command.h"

enum { FIRST_BLOCK = 1 << 16, LONG_WORK = 4 << 20, MEGABYTE = 1 << 20 };

static int is_standard(const char *path) { return path == NULL || strcmp(path, "-") == 0; }
const char *name_of_input(const char *path) { return is_standard(path) ? "standard input" : path; }

/* ---- progress ---------------------------------------------------------------------------------------- */

static int line_shown;

void begin_long_work(const options *o, const char *what, size_t size)
{
    if (o->quiet || size < LONG_WORK || !isatty(STDERR_FILENO)) return;
    fprintf(stderr, "\r%s %lu MB ...   ", what, (unsigned long)(size / MEGABYTE));
    fflush(stderr);
    line_shown = 1;
}

void end_long_work(void)
{
    if (line_shown) fprintf(stderr, "\r%40s\r", "");
    line_shown = 0;
}

/* ---- reading ----------------------------------------------------------------------------------------- */

void drop_content(content *c)
{
    if (c->block != NULL) clear_secret(c->block, c->block_size);
    free(c->block);
    memset(c, 0, sizeof *c);
}

/* Makes room for more; the old copy is wiped, because it may be secret. */
static int grow(content *c, size_t block_size)
{
    uint8_t *block = block_size > c->block_size ? malloc(block_size) : NULL;
    if (block == NULL) return 0;
    if (c->block != NULL) {
        memcpy(block, c->block, HEADROOM + c->size);
        clear_secret(c->block, c->block_size);
        free(c->block);
    }
    c->block = block;
    c->block_size = block_size;
    c->bytes = block + HEADROOM;
    return 1;
}

/* How much to allocate first: for a regular file its size. */
static size_t first_block(int fd, uint64_t limit)
{
    struct stat info;
    if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size <= 0) return FIRST_BLOCK;
    const uint64_t size = (uint64_t)info.st_size < limit ? (uint64_t)info.st_size : limit;
    return size > SIZE_MAX / 2 ? SIZE_MAX / 2 : (size_t)size + HEADROOM + 1;
}

static int read_all(const options *o, int fd, uint64_t limit, content *out)
{
    size_t shown = 0;
    if (!grow(out, first_block(fd, limit))) return ENOMEM;
    for (;;) {
        const size_t room = out->block_size - HEADROOM - out->size;
        if (room == 0) {
            if (out->block_size > SIZE_MAX / 2 || !grow(out, 2 * out->block_size)) return ENOMEM;
            continue;
        }
        const ssize_t got = read(fd, out->bytes + out->size, room < LONG_WORK ? room : LONG_WORK);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return errno;
        if (got == 0) return 0;
        out->size += (size_t)got;
        if (out->size > limit) return EFBIG;
        if (out->size - shown >= LONG_WORK) {
            shown = out->size;
            begin_long_work(o, "reading", shown);
        }
    }
}

int read_content(const options *o, const char *path, uint64_t limit, content *out)
{
    memset(out, 0, sizeof *out);
    const int fd = is_standard(path) ? STDIN_FILENO : open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0) return misuse("cannot open %s: %s", path, strerror(errno));
    const int error = read_all(o, fd, limit, out);
    end_long_work();
    if (fd != STDIN_FILENO) close(fd);
    if (error == 0) return DONE;
    drop_content(out);
    if (error == EFBIG)
        return misuse("%s is too long: the limit is %llu bytes", name_of_input(path),
                      (unsigned long long)limit);
    return misuse("cannot read %s: %s", name_of_input(path), strerror(error));
}

/* ---- writing ----------------------------------------------------------------------------------------- */

static int write_all(int fd, const uint8_t *bytes, size_t size)
{
    while (size > 0) {
        const ssize_t done = write(fd, bytes, size);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return 0;
        bytes += done;
        size -= (size_t)done;
    }
    return 1;
}

/* Writes and closes; removes a file that could not be written completely. */
static int write_and_close(int fd, const char *path, const void *bytes, size_t size)
{
    const int written = write_all(fd, bytes, size);
    const int error = errno;
    if (fd == STDOUT_FILENO) return written ? DONE : misuse("cannot write to standard output");
    if (close(fd) == 0 && written) return DONE;
    unlink(path);
    return misuse("cannot write %s: %s", path, strerror(error));
}

static uint8_t *to_hex(const uint8_t *bytes, size_t size)
{
    static const char digits[] = "0123456789abcdef";
    uint8_t *text = size < SIZE_MAX / 2 - 1 ? malloc(2 * size + 1) : NULL;
    if (text == NULL) return NULL;
    for (size_t i = 0; i < size; ++i) {
        text[2 * i] = (uint8_t)digits[bytes[i] >> 4];
        text[2 * i + 1] = (uint8_t)digits[bytes[i] & 15];
    }
    text[2 * size] = '\n';
    return text;
}

int write_result(const options *o, const uint8_t *bytes, size_t size)
{
    int status = DONE;
    int fd = STDOUT_FILENO;
    uint8_t *text = NULL;
    if (o->hex) {
        text = to_hex(bytes, size);
        if (text == NULL) return misuse("no memory for the result");
    } else if (is_standard(o->out) && isatty(STDOUT_FILENO)) {
        return misuse("not writing binary data to a terminal: use -o FILE, or -x for hexadecimal digits");
    }
    if (!is_standard(o->out)) fd = open(o->out, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0)
        status = misuse("cannot write %s: %s", o->out, strerror(errno));
    else
        status = write_and_close(fd, o->out, text != NULL ? text : bytes, text != NULL ? 2 * size + 1 : size);
    if (text != NULL) clear_secret(text, 2 * size + 1);
    free(text);
    return status;
}

/* Writes a temporary file and renames it over the old one, so that a key is never half written. */
static int replace_file(const char *path, const void *bytes, size_t size, int private)
{
    static const char suffix[] = ".XXXXXX";
    const size_t length = strlen(path);
    char *temporary = malloc(length + sizeof suffix);
    if (temporary == NULL) return misuse("no memory for the name of %s", path);
    memcpy(temporary, path, length);
    memcpy(temporary + length, suffix, sizeof suffix);
    int status = DONE;
    const int fd = mkstemp(temporary); /* mode 0600 */
    if (fd < 0) {
        status = misuse("cannot create a temporary file for %s: %s", path, strerror(errno));
    } else {
        const int public_mode = private ? 0 : fchmod(fd, 0644);
        status = write_and_close(fd, temporary, bytes, size);
        if (status == DONE && (public_mode != 0 || rename(temporary, path) != 0)) {
            status = misuse("cannot replace %s: %s", path, strerror(errno));
            unlink(temporary);
        }
    }
    free(temporary);
    return status;
}

int write_key_file(const options *o, const char *path, const void *bytes, size_t size, int private)
{
    if (is_standard(path)) return write_and_close(STDOUT_FILENO, path, bytes, size);
    if (o->force) return replace_file(path, bytes, size, private);
    const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, private ? 0600 : 0644);
    if (fd < 0 && errno == EEXIST) return misuse("%s exists: keys are only replaced with --force", path);
    if (fd < 0) return misuse("cannot write %s: %s", path, strerror(errno));
    return write_and_close(fd, path, bytes, size);
}
