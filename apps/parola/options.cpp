#include "apps/parola/options.h"

#include "apps/parola/asking.h"
#include "apps/tool/optionreader.h"

namespace veldona::parola {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    bool set = false, remove = false, keep = false, forget = false;
    OptionReader reader(usage());
    reader.flag("--koy", set)
        .flag("--kaldir", remove)
        .flag("--sorma", keep)
        .flag("--sor", forget)
        .value("--kok", options.root);
    addPasswordOption(reader, "--parola", options.fromInput);
    reader.read(arguments);
    if (int{set} + int{remove} + int{keep} + int{forget} > 1)
        throw UsageError("--koy, --kaldir, --sorma ve --sor birlikte verilmez.");
    options.task = set      ? Task::Set
                   : remove ? Task::Remove
                   : keep   ? Task::Keep
                   : forget ? Task::Forget
                            : Task::Tell;
    return options;
}

const char* usage() {
    return "Kullanım: vorel-parola [seçenekler]\n"
           "Deftere dükkânın kendi parolasını koyar, değiştirir ya da kaldırır. Seçeneksiz: hangi parolayla\n"
           "açıldığını söyler. Kendi parolasını yitiren defteri de yitirir: onu kimse geri getiremez.\n"
           "\n"
           "  --koy               yeni parolayı iki kez sorar ve koyar\n"
           "  --kaldir            programla gelen parolaya döner\n"
           "  --sorma             parolayı masaüstünün anahtarlığında saklar: bu makinede sorulmaz\n"
           "  --sor               anahtarlıktan siler: yeniden sorulur\n"
           "  --parola -          parolaları girişten okur: önce şimdiki (varsa), sonra yeni, her satıra "
           "bir\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n"
           "\n"
           "Parola hiçbir seçenekle verilmez, orada herkes okur. Defter o sırada hiçbir programda açık\n"
           "olmamalıdır. İş yarıda kesilirse defter ya eski ya yeni parolasıyla bütündür.\n";
}

} // namespace veldona::parola
