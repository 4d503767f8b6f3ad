// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/exchange_forms.h"

#include "ui/exchange/frm_data_export_node_exe.h"
#include "ui/exchange/frm_data_export_node_files.h"
#include "ui/exchange/frm_file_import.h"
#include "ui/exchange/frm_transfer.h"
#include "ui/kit/shell.h"

namespace
{
constexpr Forms::Row Form_Rows[] = {
    {"Frm_DataExport_Ex", Forms::Make<Frm_DataExport_Ex>},
    {"Frm_DataInport_Ex", Forms::Make_Changing<Frm_DataInport_Ex, &Frm_Transfer::Imported>},
    {"Frm_FileImport", Forms::Make_Changing<Frm_FileImport, &Frm_FileImport::Imported>},
    {"Frm_DataExport_Node_Files", Forms::Make<Frm_DataExport_Node_Files>},
    {"Frm_DataExport_Node_Exe", Forms::Make<Frm_DataExport_Node_Exe>},
};

template <size_t Row>
void Open(Shell &shell, QWidget *parent)
{
    Forms::Show_Modal(QLatin1String(Form_Rows[Row].name), {.parent = parent, .changed = [&shell] {
                                                               shell.Reload_All();
                                                           }});
}

constexpr Commands::Row Command_Rows[] = {
    {"Mnu_FileImport", "import", "Mnu_Exchange", Open<2>}, {"Mnu_Export_Disk", "", "Mnu_Exchange", Open<3>},
    {"Mnu_Export_Exe", "", "Mnu_Exchange", Open<4>},       {"Mnu_D_AddOut", "", "Mnu_Exchange", Open<0>},
    {"Mnu_D_AddIn", "", "Mnu_Exchange", Open<1>},
};
} // namespace

std::span<const Forms::Row> Exchange_Forms()
{
    return Form_Rows;
}

std::span<const Commands::Row> Exchange_Commands()
{
    return Command_Rows;
}
