/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/*
 * zokecc: keys, signatures, encryption, digests and random numbers from the command line, in the forms that
 * other programs use. `zokecc help` lists the commands, zokecc(1) explains them.
 */
#include <fcntl.h>
#include <getopt.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <unistd.h>

#include <zokecc/version.h>

#include "command.h"

int selftest_main(int argc, char **argv);
int speed_main(int argc, char **argv);

typedef struct command {
    const char *name;
    int (*run)(const options *);
    const char *allowed; /* letters of its options */
    int max_arguments;
    const char *usage;
} command;

static const command commands[] = {
    {"keygen", run_keygen, "cfoPDWq", 0, "-c CURVE -o FILE [-P FILE] [-f sec1|pkcs8] [-D] [--force]"},
    {"pubkey", run_pubkey, "cfoDWq", 1, "[-f spki|spki-compressed] [-o FILE] [-D] [--force] [KEY]"},
    {"check", run_check, "cq", 1, "[-c CURVE] [KEY]"},
    {"convert", run_convert, "tFfcoDWxq", 1,
     "[-t key|signature|cipher] [-F FORM] -f FORM [-c CURVE] [-o FILE] [-D] [-x] [IN]"},
    {"sign", run_sign, "koiIHfadxqc", 1,
     "-k KEY [-i IDENTITY] [-H HASH] [-a sm2|ecdsa] [-f der|raw] [-d] [-o FILE] [IN]"},
    {"verify", run_verify, "ksiIHfadqc", 1,
     "-k KEY -s SIGNATURE [-i IDENTITY] [-H HASH] [-a sm2|ecdsa] [-f der|raw] [-d] [IN]"},
    {"encrypt", run_encrypt, "koHfqxc", 1, "-k KEY [-f FORM] [-H HASH] [-o FILE] [IN]"},
    {"decrypt", run_decrypt, "koHfqxc", 1, "-k KEY [-f FORM] [-H HASH] [-o FILE] [IN]"},
    {"digest", run_digest, "HkiIqc", 1000, "[-H HASH] [-k KEY [-i IDENTITY]] [IN...]"},
    {"mac", run_mac, "Hkq", 1, "-k FILE [-H HASH] [IN]"},
    {"rand", run_rand, "ox", 1, "[-x] [-o FILE] COUNT"},
};
enum { COMMANDS = sizeof commands / sizeof commands[0] };

static const char *running = "";

static void say(const char *kind, const char *format, va_list arguments)
{
    end_long_work();
    fprintf(stderr, "zokecc%s%s: %s", running[0] != '\0' ? " " : "", running, kind);
    vfprintf(stderr, format, arguments); /* NOLINT: started by the callers */
    fputc('\n', stderr);
}

int invalid(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    say("", format, arguments);
    va_end(arguments);
    return INVALID;
}

int misuse(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    say("", format, arguments);
    va_end(arguments);
    return MISUSE;
}

void warn(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    say("warning: ", format, arguments);
    va_end(arguments);
}

static void print_usage(const command *c) { printf("zokecc %s %s\n", c->name, c->usage); }

static int help(const char *topic)
{
    if (topic != NULL && strcmp(topic, "curves") == 0) {
        for (size_t i = 0; i < named_curve_count; ++i) {
            const named_curve *curve = &named_curves[i];
            printf("%s", curve->name);
            for (int j = 0; j < CURVE_ALIASES && curve->aliases[j] != NULL; ++j)
                printf(" %s", curve->aliases[j]);
            printf("\n");
        }
        return DONE;
    }
    for (int i = 0; i < COMMANDS; ++i)
        if (topic == NULL || strcmp(topic, commands[i].name) == 0) print_usage(&commands[i]);
    if (topic == NULL)
        printf("zokecc selftest [PART]\nzokecc speed [SECONDS [PART [FILE]]]\n"
               "zokecc help [COMMAND|curves]\nzokecc --version\n\n"
               "IN, KEY: a file; standard input if - or omitted. FILE: - is standard output.\n"
               "Key forms: sec1 pkcs8 spki spki-compressed point point-compressed xy d\n"
               "Ciphertext forms: der c1c3c2 c1c2c3 c1c3c2-no04 c1c2c3-no04\n"
               "Exit status: 0 done or valid, 1 not valid, 2 not done. See zokecc(1).\n");
    return DONE;
}

enum { FORCE = 'W' }; /* has no short form */

static const struct option long_options[] = {
    {"key", 1, NULL, 'k'},     {"out", 1, NULL, 'o'},       {"curve", 1, NULL, 'c'},  {"id", 1, NULL, 'i'},
    {"id-hex", 1, NULL, 'I'},  {"signature", 1, NULL, 's'}, {"hash", 1, NULL, 'H'},   {"form", 1, NULL, 'f'},
    {"from", 1, NULL, 'F'},    {"algorithm", 1, NULL, 'a'}, {"public", 1, NULL, 'P'}, {"type", 1, NULL, 't'},
    {"hex", 0, NULL, 'x'},     {"digest", 0, NULL, 'd'},    {"der", 0, NULL, 'D'},    {"quiet", 0, NULL, 'q'},
    {"force", 0, NULL, FORCE}, {"help", 0, NULL, 'h'},      {NULL, 0, NULL, 0},
};

/* The long name of an option, which must exist. */
static const char *name_of_option(int letter)
{
    const struct option *found = long_options;
    while (found->val != letter) ++found;
    return found->name;
}

/* These return where the value of an option, or the flag of one without a value, is stored. */
static const char **value_of(options *o, int letter)
{
    switch (letter) {
    case 'k': return &o->key;
    case 'o': return &o->out;
    case 'c': return &o->curve;
    case 'i': return &o->id;
    case 'I': return &o->id_hex;
    case 's': return &o->signature;
    case 'H': return &o->hash;
    case 'f': return &o->format;
    case 'F': return &o->from;
    case 'a': return &o->algorithm;
    case 'P': return &o->pub;
    case 't': return &o->type;
    default: return NULL;
    }
}

static int *flag_of(options *o, int letter)
{
    switch (letter) {
    case 'x': return &o->hex;
    case 'd': return &o->prehashed;
    case 'D': return &o->der;
    case 'q': return &o->quiet;
    case FORCE: return &o->force;
    default: return NULL;
    }
}

static int parse(const command *c, int argc, char **argv, options *o)
{
    int letter = 0;
    opterr = 0;
    while ((letter = getopt_long(argc, argv, ":k:o:c:i:I:s:H:f:F:a:P:t:xdDqh", long_options, NULL)) != -1) {
        if (letter == 'h') {
            print_usage(c);
            exit(DONE);
        }
        if (letter == ':') return misuse("%s needs a value; see `zokecc help %s`", argv[optind - 1], c->name);
        if (letter == '?')
            return misuse("unknown option %s; see `zokecc help %s`", argv[optind - 1], c->name);
        if (strchr(c->allowed, letter) == NULL)
            return misuse("--%s does not apply here; see `zokecc help %s`", name_of_option(letter), c->name);
        const char **value = value_of(o, letter);
        int *flag = flag_of(o, letter);
        if (value != NULL) *value = optarg;
        if (flag != NULL) *flag = 1;
    }
    o->args = argv + optind;
    o->count = argc - optind;
    if (o->count > c->max_arguments) return misuse("too many arguments; see `zokecc help %s`", c->name);
    const char *in = argument(o, 0);
    if (o->key != NULL && strcmp(o->key, "-") == 0 && (in == NULL || strcmp(in, "-") == 0))
        return misuse("key and input cannot both come from standard input");
    return DONE;
}

/* If one of the three were closed, a key file could get its descriptor and receive messages. */
static void open_standard_files(void)
{
    int fd = 0;
    do fd = open("/dev/null", O_RDWR);
    while (fd >= 0 && fd <= STDERR_FILENO);
    if (fd > STDERR_FILENO) close(fd);
}

int main(int argc, char **argv)
{
    const struct rlimit no_core = {0, 0};
    const char *name = argc > 1 ? argv[1] : "";
    options o;
    memset(&o, 0, sizeof o);
    setrlimit(RLIMIT_CORE, &no_core); /* a core file would hold keys */
    open_standard_files();
    if (strcmp(name, "help") == 0 || strcmp(name, "--help") == 0 || strcmp(name, "-h") == 0)
        return help(argc > 2 ? argv[2] : NULL);
    if (strcmp(name, "--version") == 0) {
        printf("zokecc %s\n", ZOKECC_VERSION_STRING);
        return DONE;
    }
    if (strcmp(name, "selftest") == 0) return selftest_main(argc - 1, argv + 1);
    if (strcmp(name, "speed") == 0) return speed_main(argc - 1, argv + 1);
    for (int i = 0; i < COMMANDS; ++i) {
        if (strcmp(name, commands[i].name) != 0) continue;
        running = commands[i].name;
        int status = parse(&commands[i], argc - 1, argv + 1, &o);
        if (status == DONE) status = commands[i].run(&o);
        if (status == DONE && fflush(stdout) != 0) status = misuse("cannot write to standard output");
        return status;
    }
    if (name[0] == '\0') return misuse("missing a command: see `zokecc help`");
    return misuse("unknown command %s: see `zokecc help`", name);
}
