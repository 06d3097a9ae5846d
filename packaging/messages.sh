# shellcheck shell=sh disable=SC2034,SC1112 # the scripts that read this file use the variables; quotes are typographic
# The messages of the launcher and zvinstall-report for the user, in the program's languages. Both scripts read this
# file.

load_messages() # load_messages LOCALE, such as de_DE.UTF-8
{
    cannot_start='ZV Tolvar Setup cannot start. The system reports:'
    needs='The program needs this version or a later one:'
    install='On Debian and Ubuntu, this command installs what is missing:'
    report_written='Read the report before you send it to anyone. It holds no passphrases, but names of networks and users.'
    report_failed='The report cannot be written:'

    # The messages below are in UTF-8. A terminal with another encoding cannot show them.
    case $1 in
    *[Uu][Tt][Ff]8* | *[Uu][Tt][Ff]-8*) ;;
    *) return ;;
    esac
    case $1 in
    ar[_.]*)
        cannot_start='يتعذّر بدء تشغيل ZV Tolvar Setup. أبلغ النظام بما يلي:'
        needs='يحتاج البرنامج إلى هذا الإصدار أو إصدار أحدث:'
        install='على Debian وUbuntu، يثبّت هذا الأمر ما ينقص:'
        report_written='اقرأ التقرير قبل إرساله إلى أي شخص. لا يحتوي على كلمات مرور، لكنه يحتوي على أسماء شبكات ومستخدمين.'
        report_failed='تتعذّر كتابة التقرير:'
        ;;
    de[_.]*)
        cannot_start='ZV Tolvar Setup kann nicht starten. Das System meldet:'
        needs='Das Programm braucht diese Version oder eine neuere:'
        install='Unter Debian und Ubuntu installiert dieser Befehl, was fehlt:'
        report_written='Lesen Sie den Bericht, bevor Sie ihn weitergeben. Er enthält keine Passwörter, aber Namen von Netzwerken und Benutzern.'
        report_failed='Der Bericht kann nicht geschrieben werden:'
        ;;
    es[_.]*)
        cannot_start='ZV Tolvar Setup no se puede iniciar. El sistema informa:'
        needs='El programa necesita esta versión o una posterior:'
        install='En Debian y Ubuntu, esta orden instala lo que falta:'
        report_written='Lea el informe antes de enviarlo a nadie. No contiene contraseñas, pero sí nombres de redes y de usuarios.'
        report_failed='No se puede escribir el informe:'
        ;;
    fr[_.]*)
        cannot_start='ZV Tolvar Setup ne peut pas démarrer. Le système signale :'
        needs='Le programme a besoin de cette version ou d’une version ultérieure :'
        install='Sous Debian et Ubuntu, cette commande installe ce qui manque :'
        report_written='Lisez le rapport avant de l’envoyer à qui que ce soit. Il ne contient aucun mot de passe, mais des noms de réseaux et d’utilisateurs.'
        report_failed='Impossible d’écrire le rapport :'
        ;;
    it[_.]*)
        cannot_start='Impossibile avviare ZV Tolvar Setup. Il sistema segnala:'
        needs='Il programma richiede questa versione o una successiva:'
        install='Su Debian e Ubuntu, questo comando installa ciò che manca:'
        report_written='Legga il rapporto prima di inviarlo a qualcuno. Non contiene password, ma nomi di reti e di utenti.'
        report_failed='Impossibile scrivere il rapporto:'
        ;;
    ja[_.]*)
        cannot_start='ZV Tolvar Setup を起動できません。システムからの報告:'
        needs='このプログラムには次のバージョン以降が必要です:'
        install='Debian と Ubuntu では、次のコマンドで不足しているものをインストールできます:'
        report_written='レポートを送る前に内容を確認してください。パスワードは含まれませんが、ネットワーク名とユーザー名が含まれます。'
        report_failed='レポートを書き込めません:'
        ;;
    nl[_.]*)
        cannot_start='ZV Tolvar Setup kan niet starten. Het systeem meldt:'
        needs='Het programma heeft deze versie of een nieuwere nodig:'
        install='Op Debian en Ubuntu installeert deze opdracht wat ontbreekt:'
        report_written='Lees het rapport voordat u het naar iemand stuurt. Het bevat geen wachtwoorden, maar wel namen van netwerken en gebruikers.'
        report_failed='Het rapport kan niet worden geschreven:'
        ;;
    pl[_.]*)
        cannot_start='Nie można uruchomić ZV Tolvar Setup. System zgłasza:'
        needs='Program wymaga tej wersji lub nowszej:'
        install='W systemach Debian i Ubuntu to polecenie instaluje to, czego brakuje:'
        report_written='Przeczytaj raport, zanim go komuś wyślesz. Nie zawiera haseł, ale zawiera nazwy sieci i użytkowników.'
        report_failed='Nie można zapisać raportu:'
        ;;
    pt[_.]*)
        cannot_start='Não é possível iniciar o ZV Tolvar Setup. O sistema informa:'
        needs='O programa precisa desta versão ou de uma posterior:'
        install='No Debian e no Ubuntu, este comando instala o que falta:'
        report_written='Leia o relatório antes de enviá-lo a alguém. Ele não contém senhas, mas contém nomes de redes e de usuários.'
        report_failed='Não é possível gravar o relatório:'
        ;;
    zh[_.]*)
        cannot_start='ZV Tolvar Setup 无法启动。系统报告：'
        needs='程序需要此版本或更高版本：'
        install='在 Debian 和 Ubuntu 上，此命令可安装缺少的软件：'
        report_written='将报告发送给他人之前，请先阅读。报告不含密码，但包含网络名称和用户名。'
        report_failed='无法写入报告：'
        ;;
    esac
}
