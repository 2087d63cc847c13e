; What the set-up says. Word NAME ENGLISH GERMAN FRENCH
!macro Word NAME ENGLISH GERMAN FRENCH
  LangString ${NAME} ${LANG_ENGLISH} "${ENGLISH}"
  LangString ${NAME} ${LANG_GERMAN} "${GERMAN}"
  LangString ${NAME} ${LANG_FRENCH} "${FRENCH}"
!macroend

!macro SetupWords
!insertmacro Word WhoForTitle "Who is it for?" "Für wen?" "Pour qui ?"
!insertmacro Word WhoForSubtitle "Choose who may use Stillpost on this computer." \
  "Wählen Sie, wer Stillpost auf diesem Computer verwenden kann." \
  "Choisissez qui peut utiliser Stillpost sur cet ordinateur."
!insertmacro Word ForMe "Only for &me" "Nur für &mich" "Seulement pour &moi"
!insertmacro Word ForMeMore \
  "No administrator is needed. Program and settings lie together in a folder of yours." \
  "Dafür braucht es keinen Administrator. Programm und Einstellungen liegen zusammen in einem Ordner von Ihnen." \
  "Aucun administrateur n'est nécessaire. Le programme et ses réglages se trouvent ensemble dans un de vos dossiers."
!insertmacro Word ForEverybody "For &all users of this computer" "Für &alle Benutzer dieses Computers" \
  "Pour &tous les utilisateurs de cet ordinateur"
!insertmacro Word ForEverybodyMore "Windows asks for an administrator. Each user has settings of their own." \
  "Windows fragt nach einem Administrator. Jeder Benutzer hat eigene Einstellungen." \
  "Windows demande un administrateur. Chaque utilisateur a ses propres réglages."
!insertmacro Word ProgramMore "The program, its skins and its help." \
  "Das Programm, seine Skins und seine Hilfe." "Le programme, ses skins et son aide."
!insertmacro Word StartMenu "In the start menu" "Im Startmenü" "Dans le menu Démarrer"
!insertmacro Word StartMenuMore "Stillpost stands in the start menu." "Stillpost steht im Startmenü." \
  "Stillpost figure dans le menu Démarrer."
!insertmacro Word StartWithWindows "Start with Windows" "Mit Windows starten" "Démarrer avec Windows"
!insertmacro Word StartWithWindowsMore \
  "Stillpost starts when you log in. It publishes by itself once this is ticked in its FTP settings, too." \
  "Stillpost startet, wenn Sie sich anmelden. Von allein veröffentlicht es, wenn das auch in seinen FTP-Einstellungen angekreuzt ist." \
  "Stillpost démarre à l'ouverture de session. Il publie de lui-même si c'est aussi coché dans ses réglages FTP."
!insertmacro Word FirewallHint \
  "Stillpost is installed.$\r$\n$\r$\nShould Windows ask whether Stillpost may be reached from the network: allow it if you send pictures by FTP without $\"passive mode$\". The server then opens a connection to this computer. All other ways need no permission." \
  "Stillpost ist installiert.$\r$\n$\r$\nFragt Windows, ob Stillpost aus dem Netzwerk erreicht werden darf: Erlauben Sie es, wenn Sie Bilder über FTP ohne den passiven Modus senden. Der Server öffnet dann eine Verbindung zu diesem Computer. Alle anderen Wege brauchen keine Erlaubnis." \
  "Stillpost est installé.$\r$\n$\r$\nSi Windows demande si Stillpost peut être joint depuis le réseau : autorisez-le si vous envoyez les images par FTP sans le mode passif. Le serveur ouvre alors une connexion vers cet ordinateur. Les autres voies n'ont besoin d'aucune autorisation."
!insertmacro Word StartNow "&Start Stillpost now" "Stillpost jetzt &starten" "&Démarrer Stillpost maintenant"
!insertmacro Word AskToCloseText \
  "Stillpost is running. It must be closed first.$\r$\n$\r$\nClose it now?" \
  "Stillpost läuft. Es muss zuerst beendet werden.$\r$\n$\r$\nJetzt beenden?" \
  "Stillpost est en marche. Il faut d'abord le fermer.$\r$\n$\r$\nLe fermer maintenant ?"
!insertmacro Word Closing "Closing Stillpost..." "Stillpost wird beendet..." "Fermeture de Stillpost..."
!insertmacro Word StillRunning \
  "Stillpost is still running, perhaps for another user. Close it, then try again." \
  "Stillpost läuft noch, vielleicht bei einem anderen Benutzer. Beenden Sie es und versuchen Sie es dann noch einmal." \
  "Stillpost est encore en marche, peut-être chez un autre utilisateur. Fermez-le, puis réessayez."
!insertmacro Word NotAllowed \
  "Nothing was installed: it needs an administrator. Go back and choose $\"Only for me$\"." \
  "Es wurde nichts installiert: Dafür braucht es einen Administrator. Gehen Sie zurück und wählen Sie „Nur für mich“." \
  "Rien n'a été installé : il faut un administrateur. Revenez en arrière et choisissez « Seulement pour moi »."
!insertmacro Word TooOld "Stillpost needs Windows 10 or later, 64 bit." \
  "Stillpost braucht Windows 10 oder neuer mit 64 Bit." "Stillpost a besoin de Windows 10 ou plus récent, en 64 bits."
!insertmacro Word RemoveTitle "Remove Stillpost" "Stillpost entfernen" "Supprimer Stillpost"
!insertmacro Word RemoveSubtitle "The program is removed from this computer." \
  "Das Programm wird von diesem Computer entfernt." "Le programme est supprimé de cet ordinateur."
!insertmacro Word RemoveText \
  "Your settings stay, so that a later version can go on with them. Pictures and films that you have kept stay in any case." \
  "Ihre Einstellungen bleiben, sodass eine spätere Version mit ihnen weitermachen kann. Bilder und Filme, die Sie aufgehoben haben, bleiben auf jeden Fall." \
  "Vos réglages restent, pour qu'une version ultérieure puisse les reprendre. Les images et les films que vous avez gardés restent dans tous les cas."
!insertmacro Word DeleteSettingsText "&Delete my settings, too" "Auch meine Einstellungen &löschen" \
  "&Effacer aussi mes réglages"
!insertmacro Word DeleteSettingsMore \
  "With the passwords in them, the log, further cameras, and the films of the day. This cannot be undone." \
  "Mit den Passwörtern darin, dem Protokoll, weiteren Kameras und den Tagesfilmen. Das lässt sich nicht rückgängig machen." \
  "Avec les mots de passe qu'ils contiennent, le journal, les autres caméras et les films du jour. C'est irréversible."
!insertmacro Word RemoveButton "&Remove" "&Entfernen" "&Supprimer"
!macroend
