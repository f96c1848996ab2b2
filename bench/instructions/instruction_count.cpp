/*
 * A plugin for the user-mode emulator: prints on standard error, as "instructions: N", how many
 * instructions the emulated program has run. The machine's package has the interface without its
 * header; what is used of it is declared here, as its version 1 has it.
 */

#include <cstddef>
#include <cstdint>
#include <cstdio>

extern "C" {

struct qemu_plugin_tb;
struct qemu_info_t;
using qemu_plugin_id_t = uint64_t;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

size_t qemu_plugin_tb_n_insns(const qemu_plugin_tb *block);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*callback)(qemu_plugin_id_t, qemu_plugin_tb *));
void qemu_plugin_register_vcpu_tb_exec_inline(qemu_plugin_tb *block, qemu_plugin_op operation,
                                              void *number, uint64_t summand);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, void (*callback)(qemu_plugin_id_t, void *),
                                    void *context);

[[gnu::visibility("default")]] extern const int qemu_plugin_version = 1;
[[gnu::visibility("default")]] int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t *info,
                                                       int count, char **arguments);
}

namespace
{

uint64_t instructions;

/* Each run of a translated block adds its length. */
void block_translated(qemu_plugin_id_t /*id*/, qemu_plugin_tb *block)
{
    qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &instructions,
                                             qemu_plugin_tb_n_insns(block));
}

void program_ended(qemu_plugin_id_t /*id*/, void * /*context*/)
{
    std::fprintf(stderr, "instructions: %llu\n", static_cast<unsigned long long>(instructions));
}

} // namespace

int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t * /*info*/, int /*count*/,
                        char ** /*arguments*/)
{
    qemu_plugin_register_vcpu_tb_trans_cb(id, block_translated);
    qemu_plugin_register_atexit_cb(id, program_ended, nullptr);
    return 0;
}
