<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AnalysisInputs</name>
    <message>
        <source>the input table</source>
        <translation>le tableau d&apos;entrée</translation>
    </message>
    <message>
        <source>the starting collection</source>
        <translation>la collection de départ</translation>
    </message>
    <message>
        <source>the workspace file</source>
        <translation>le fichier d&apos;espace de travail</translation>
    </message>
    <message>
        <source>%1 is %2 of this analysis, and an output never replaces a file the analysis reads.</source>
        <translation>%1 est %2 de cette analyse, et une sortie ne remplace jamais un fichier que l&apos;analyse lit.</translation>
    </message>
    <message>
        <source>%1 is the same file as %2, %3 of this analysis, and an output never replaces a file the analysis reads.</source>
        <translation>%1 est le même fichier que %2, %3 de cette analyse, et une sortie ne remplace jamais un fichier que l&apos;analyse lit.</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Displays help on commandline options.</source>
        <translation>Affiche l&apos;aide sur les options de la ligne de commande.</translation>
    </message>
    <message>
        <source>Displays help including Qt specific options.</source>
        <translation>Affiche l&apos;aide, y compris les options propres à Qt.</translation>
    </message>
</context>
<context>
    <name>TableChecks</name>
    <message>
        <source>nothing</source>
        <translation>rien</translation>
    </message>
    <message>
        <source>The starting collection&apos;s header differs from the input&apos;s in column %1: %2 instead of %3.</source>
        <translation>L&apos;en-tête de la collection de départ diffère de celui de l&apos;entrée à la colonne %1 : %2 au lieu de %3.</translation>
    </message>
</context>
<context>
    <name>TableMemory</name>
    <message>
        <source>%1 MB</source>
        <translation>%1 Mo</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 Go</translation>
    </message>
    <message>
        <source>is too large to read: its %1 hold %2 fields, which would take about %3 of memory, and Vireon reads tables of up to %4</source>
        <translation>est trop volumineux pour être lu : ses %1 contiennent %2 champs, qui occuperaient environ %3 de mémoire, et Vireon lit des tableaux de %4 au plus</translation>
    </message>
</context>
<context>
    <name>TableNotes</name>
    <message>
        <source>1 line of the file was left out because its number of fields differs from the header row: line %1.</source>
        <translation>1 ligne du fichier a été ignorée parce que son nombre de champs diffère de celui de la ligne d&apos;en-tête : ligne %1.</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>et %n autre</numerusform>
            <numerusform>et %n autres</numerusform>
        </translation>
    </message>
    <message>
        <source>and</source>
        <translation>et</translation>
    </message>
    <message numerus="yes">
        <source>%n lines of the file were left out because their number of fields differs from the header row: lines %1.</source>
        <translation>
            <numerusform>%n ligne du fichier a été ignorée parce que son nombre de champs diffère de celui de la ligne d&apos;en-tête : ligne %1.</numerusform>
            <numerusform>%n lignes du fichier ont été ignorées parce que leur nombre de champs diffère de celui de la ligne d&apos;en-tête : lignes %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (columns %2)</source>
        <translation>%1 (colonnes %2)</translation>
    </message>
    <message>
        <source>A marker&apos;s name returns after other markers&apos; columns, and the alleles of all its columns are counted as one marker: %1.</source>
        <translation>Le nom d&apos;un marqueur revient après des colonnes d&apos;autres marqueurs, et les allèles de toutes ses colonnes sont comptés comme un seul marqueur : %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n markers&apos; names return after other markers&apos; columns, and the alleles of all columns of one name are counted as one marker: %1.</source>
        <translation>
            <numerusform>Le nom de %n marqueur revient après des colonnes d&apos;autres marqueurs, et les allèles de toutes les colonnes d&apos;un même nom sont comptés comme un seul marqueur : %1.</numerusform>
            <numerusform>Les noms de %n marqueurs reviennent après des colonnes d&apos;autres marqueurs, et les allèles de toutes les colonnes d&apos;un même nom sont comptés comme un seul marqueur : %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accession names stand in more than one row: %1.</source>
        <translation>
            <numerusform>%n nom d&apos;accession figure sur plus d&apos;une ligne : %1.</numerusform>
            <numerusform>%n noms d&apos;accession figurent sur plus d&apos;une ligne : %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (rows %2)</source>
        <translation>%1 (lignes %2)</translation>
    </message>
    <message>
        <source>An accession name stands in more than one row: %1.</source>
        <translation>Un nom d&apos;accession figure sur plus d&apos;une ligne : %1.</translation>
    </message>
</context>
<context>
    <name>TableReading</name>
    <message>
        <source>Reading %1...</source>
        <translation>Lecture de %1...</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Lecture</translation>
    </message>
</context>
<context>
    <name>TextFile</name>
    <message>
        <source>This file is not UTF-8; it was read as Windows-1252.</source>
        <translation>Ce fichier n&apos;est pas en UTF-8 ; il a été lu comme Windows-1252.</translation>
    </message>
    <message>
        <source>is a folder</source>
        <translation>est un dossier</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>n&apos;est pas un fichier ordinaire</translation>
    </message>
    <message>
        <source>is too large: %1 MB, and Vireon reads files of up to %2 MB</source>
        <translation>est trop volumineux : %1 Mo, et Vireon lit des fichiers de %2 Mo au plus</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>n&apos;existe pas</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>ne peut pas être lu</translation>
    </message>
    <message>
        <source>This file is UTF-16 (little-endian) without a byte-order mark; it was read that way.</source>
        <translation>Ce fichier est en UTF-16 (petit-boutiste) sans indicateur d&apos;ordre des octets ; il a été lu ainsi.</translation>
    </message>
    <message>
        <source>This file is UTF-16 (big-endian) without a byte-order mark; it was read that way.</source>
        <translation>Ce fichier est en UTF-16 (gros-boutiste) sans indicateur d&apos;ordre des octets ; il a été lu ainsi.</translation>
    </message>
    <message>
        <source>This file is UTF-32 (little-endian) without a byte-order mark; it was read that way.</source>
        <translation>Ce fichier est en UTF-32 (petit-boutiste) sans indicateur d&apos;ordre des octets ; il a été lu ainsi.</translation>
    </message>
    <message>
        <source>This file is UTF-32 (big-endian) without a byte-order mark; it was read that way.</source>
        <translation>Ce fichier est en UTF-32 (gros-boutiste) sans indicateur d&apos;ordre des octets ; il a été lu ainsi.</translation>
    </message>
    <message>
        <source>is not a text file: it holds NUL bytes</source>
        <translation>n&apos;est pas un fichier texte : il contient des octets NUL</translation>
    </message>
    <message>
        <source>looks like %1 without a byte-order mark, but is not valid %1</source>
        <translation>ressemble à de l&apos;%1 sans indicateur d&apos;ordre des octets, mais n&apos;est pas de l&apos;%1 valide</translation>
    </message>
    <message>
        <source>is too large: more than %1 MB, and Vireon reads files of up to %1 MB</source>
        <translation>est trop volumineux : plus de %1 Mo, et Vireon lit des fichiers de %1 Mo au plus</translation>
    </message>
    <message>
        <source>is too large to read in the memory available</source>
        <translation>est trop volumineux pour être lu avec la mémoire disponible</translation>
    </message>
</context>
<context>
    <name>XAnalysisFile</name>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Export the analysis before quitting?</source>
        <translation>Exporter l&apos;analyse avant de quitter ?</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>Exporter...</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>XCli</name>
    <message>
        <source>vireon-cli: %1</source>
        <translation>vireon-cli : %1</translation>
    </message>
    <message>
        <source>Try &apos;vireon-cli --help&apos; for more information.</source>
        <translation>Essayez &apos;vireon-cli --help&apos; pour plus d&apos;informations.</translation>
    </message>
    <message>
        <source>%1 of the %2 lines below the header row were left out, more than half, so the table is refused; --allow-left-out searches the %3 that were read.</source>
        <translation>%1 des %2 lignes sous la ligne d&apos;en-tête ont été ignorées, plus de la moitié, donc le tableau est refusé ; --allow-left-out cherche dans les %3 qui ont été lues.</translation>
    </message>
    <message>
        <source>%1: cannot be written: %2</source>
        <translation>%1 : ne peut pas être écrit : %2</translation>
    </message>
    <message>
        <source>Selects core collections: for each percentage 1 to 100 of the alleles of INPUT, the smallest set of accessions found that holds that share.</source>
        <translation>Sélectionne des collections noyaux : pour chaque pourcentage de 1 à 100 des allèles d&apos;ENTRÉE, le plus petit ensemble d&apos;accessions trouvé qui conserve cette part.</translation>
    </message>
    <message>
        <source>starting collection</source>
        <translation>collection de départ</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>FICHIER</translation>
    </message>
    <message>
        <source>attempts per core size (default 10, at least 1)</source>
        <translation>essais par taille de noyau (10 par défaut, au moins 1)</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>random seed; 0 takes it from the clock (default 0)</source>
        <translation>graine aléatoire ; 0 la prend de l&apos;horloge (0 par défaut)</translation>
    </message>
    <message>
        <source>write the whole analysis as a workspace file, slider at --percent</source>
        <translation>écrit l&apos;analyse entière dans un fichier d&apos;espace de travail, curseur à --percent</translation>
    </message>
    <message>
        <source>write the core of --percent (a name ending in .xls or .xlsx as a workbook, any other as comma-separated text)</source>
        <translation>écrit le noyau de --percent (un nom finissant par .xls ou .xlsx comme classeur, tout autre comme texte séparé par des virgules)</translation>
    </message>
    <message>
        <source>the core that --output writes (1..100, default 100)</source>
        <translation>le noyau que --output écrit (1..100, 100 par défaut)</translation>
    </message>
    <message>
        <source>P</source>
        <translation>P</translation>
    </message>
    <message>
        <source>print the result&apos;s text form (the 100 lines of a workspace&apos;s result section) instead of the summary</source>
        <translation>affiche le résultat sous forme de texte (les 100 lignes de la section résultat d&apos;un espace de travail) au lieu du résumé</translation>
    </message>
    <message>
        <source>no progress on stderr</source>
        <translation>pas de progression sur stderr</translation>
    </message>
    <message>
        <source>threads that search (default 0: one per core); any count gives the same result</source>
        <translation>fils qui cherchent (0 par défaut : un par cœur de processeur) ; tout nombre donne le même résultat</translation>
    </message>
    <message>
        <source>reproducible (default): the randomised search, repeatable from its seed; exact: the fewest accessions for each percentage, proven minimal or with a lower bound</source>
        <translation>reproducible (par défaut) : la recherche aléatoire, reproductible à partir de sa graine ; exact : le moins d&apos;accessions pour chaque pourcentage, minimum prouvé ou avec une borne inférieure</translation>
    </message>
    <message>
        <source>MODE</source>
        <translation>MODE</translation>
    </message>
    <message>
        <source>seconds the exact search may spend on its proofs (default 60)</source>
        <translation>secondes que la recherche exacte peut consacrer à ses preuves (60 par défaut)</translation>
    </message>
    <message>
        <source>SECONDS</source>
        <translation>SECONDES</translation>
    </message>
    <message>
        <source>search a .csv table even when more than half of its lines were left out (their number of fields differs from the header row&apos;s)</source>
        <translation>cherche dans un tableau .csv même si plus de la moitié de ses lignes ont été ignorées (leur nombre de champs diffère de celui de la ligne d&apos;en-tête)</translation>
    </message>
    <message>
        <source>INPUT</source>
        <translation>ENTRÉE</translation>
    </message>
    <message>
        <source>the table of accessions (.csv, .xls, .xlsx or .ods), or a workspace file (.ccw) to print and write from without a search</source>
        <translation>le tableau d&apos;accessions (.csv, .xls, .xlsx ou .ods), ou un fichier d&apos;espace de travail (.ccw) à afficher et à écrire sans recherche</translation>
    </message>
    <message>
        <source>no INPUT given.</source>
        <translation>aucune ENTRÉE indiquée.</translation>
    </message>
    <message>
        <source>only one INPUT may be given.</source>
        <translation>une seule ENTRÉE peut être indiquée.</translation>
    </message>
    <message>
        <source>--iterations needs a whole number of at least 1.</source>
        <translation>--iterations demande un nombre entier d&apos;au moins 1.</translation>
    </message>
    <message>
        <source>--seed needs a whole number.</source>
        <translation>--seed demande un nombre entier.</translation>
    </message>
    <message>
        <source>--threads needs a whole number of at least 0.</source>
        <translation>--threads demande un nombre entier d&apos;au moins 0.</translation>
    </message>
    <message>
        <source>--percent needs a whole number from 1 to 100.</source>
        <translation>--percent demande un nombre entier de 1 à 100.</translation>
    </message>
    <message>
        <source>--search is reproducible or exact.</source>
        <translation>--search vaut reproducible ou exact.</translation>
    </message>
    <message>
        <source>--budget needs a whole number of seconds, 0 or more.</source>
        <translation>--budget demande un nombre entier de secondes, 0 ou plus.</translation>
    </message>
    <message>
        <source>--output and --workspace name the same file, %1.</source>
        <translation>--output et --workspace désignent le même fichier, %1.</translation>
    </message>
    <message>
        <source>%1 cannot be given with a workspace file: it holds its analysis already.</source>
        <translation>%1 ne peut pas être indiqué avec un fichier d&apos;espace de travail : il contient déjà son analyse.</translation>
    </message>
</context>
<context>
    <name>XCore</name>
    <message>
        <source>Invalid value in csv.</source>
        <translation>Valeur non valide dans le csv.</translation>
    </message>
    <message>
        <source>Error while allocating memory.</source>
        <translation>Erreur lors de l&apos;allocation de mémoire.</translation>
    </message>
    <message>
        <source>The number of iterations must be at least 1.</source>
        <translation>Le nombre d&apos;itérations doit être d&apos;au moins 1.</translation>
    </message>
    <message>
        <source>The input table has no accessions.</source>
        <translation>Le tableau d&apos;entrée n&apos;a pas d&apos;accessions.</translation>
    </message>
    <message>
        <source>Different headers.</source>
        <translation>En-têtes différents.</translation>
    </message>
</context>
<context>
    <name>XCoreReport</name>
    <message numerus="yes">
        <source>%n accession</source>
        <translation>
            <numerusform>%n accession</numerusform>
            <numerusform>%n accessions</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accessions</source>
        <translation>
            <numerusform>%n accession</numerusform>
            <numerusform>%n accessions</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accession (%1 in the starting collection)</source>
        <translation>
            <numerusform>%n accession (%1 dans la collection de départ)</numerusform>
            <numerusform>%n accessions (%1 dans la collection de départ)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n accessions (%1 in the starting collection)</source>
        <translation>
            <numerusform>%n accession (%1 dans la collection de départ)</numerusform>
            <numerusform>%n accessions (%1 dans la collection de départ)</numerusform>
        </translation>
    </message>
    <message>
        <source>a cell of the tables is not an allele</source>
        <translation>une cellule des tableaux n&apos;est pas un allèle</translation>
    </message>
    <message>
        <source>the search reports %1 of %2 alleles</source>
        <translation>la recherche indique %1 allèles sur %2</translation>
    </message>
    <message>
        <source>they hold %1 (%2 %)</source>
        <translation>elles en contiennent %1 (%2 %)</translation>
    </message>
    <message>
        <source>proven smallest</source>
        <translation>minimum prouvé</translation>
    </message>
    <message>
        <source>not proven smallest</source>
        <translation>minimum non prouvé</translation>
    </message>
    <message numerus="yes">
        <source>at least %n accession is needed</source>
        <translation>
            <numerusform>il faut au moins %n accession</numerusform>
            <numerusform>il faut au moins %n accessions</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>at least %n accessions are needed</source>
        <translation>
            <numerusform>il faut au moins %n accession</numerusform>
            <numerusform>il faut au moins %n accessions</numerusform>
        </translation>
    </message>
    <message>
        <source>they hold %1 of %2 alleles (%3 %)</source>
        <translation>elles contiennent %1 allèles sur %2 (%3 %)</translation>
    </message>
    <message>
        <source>Exact search</source>
        <translation>Recherche exacte</translation>
    </message>
    <message numerus="yes">
        <source>%1 of %n cores proven smallest</source>
        <translation>
            <numerusform>%1 noyau sur %n de taille minimale prouvée</numerusform>
            <numerusform>%1 noyaux sur %n de taille minimale prouvée</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Reproducible search</source>
        <translation>Recherche reproductible</translation>
    </message>
    <message>
        <source>seed %1</source>
        <translation>graine %1</translation>
    </message>
    <message numerus="yes">
        <source>%n iteration</source>
        <translation>
            <numerusform>%n itération</numerusform>
            <numerusform>%n itérations</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n iterations</source>
        <translation>
            <numerusform>%n itération</numerusform>
            <numerusform>%n itérations</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>XCoreSummary</name>
    <message>
        <source>percent	accessions	alleles	recounted</source>
        <translation>pourcentage	accessions	allèles	recomptés</translation>
    </message>
    <message>
        <source>Total alleles: %1; seed: %2</source>
        <translation>Allèles au total : %1 ; graine : %2</translation>
    </message>
    <message>
        <source>%1 (no header)</source>
        <translation>%1 (sans en-tête)</translation>
    </message>
    <message>
        <source>start row %1, column %2: &quot;%3&quot;</source>
        <translation>ligne %1 de la collection de départ, colonne %2 : &quot;%3&quot;</translation>
    </message>
    <message>
        <source>input row %1, column %2: &quot;%3&quot;</source>
        <translation>ligne %1 de l&apos;entrée, colonne %2 : &quot;%3&quot;</translation>
    </message>
    <message>
        <source>percent	accessions	alleles	size</source>
        <translation>pourcentage	accessions	allèles	taille</translation>
    </message>
    <message>
        <source>minimal</source>
        <translation>minimal</translation>
    </message>
    <message>
        <source>Total alleles: %1; (marker, 0) pairs left out: %2</source>
        <translation>Allèles au total : %1 ; paires (marqueur, 0) ignorées : %2</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>not recorded</source>
        <translation>non enregistré</translation>
    </message>
    <message numerus="yes">
        <source>Proven minimal: %1 of %n entries; time: %2</source>
        <translation>
            <numerusform>Minimum prouvé : %1 entrée sur %n ; temps : %2</numerusform>
            <numerusform>Minimum prouvé : %1 entrées sur %n ; temps : %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>XCsv</name>
    <message>
        <source>This file separates its fields with semicolons; it was read that way.</source>
        <translation>Ce fichier sépare ses champs par des points-virgules ; il a été lu ainsi.</translation>
    </message>
    <message>
        <source>This file separates its fields with tabs; it was read that way.</source>
        <translation>Ce fichier sépare ses champs par des tabulations ; il a été lu ainsi.</translation>
    </message>
</context>
<context>
    <name>XCsvEditor</name>
    <message>
        <source>Find</source>
        <translation>Trouver</translation>
    </message>
    <message>
        <source>Click on the button to find and correct errors.</source>
        <translation>Cliquez sur le bouton pour trouver et corriger les erreurs.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Insert row before selection</source>
        <translation>Insérer une ligne avant la sélection</translation>
    </message>
    <message>
        <source>Insert row after selection</source>
        <translation>Insérer une ligne après la sélection</translation>
    </message>
    <message>
        <source>Remove selected row(s).</source>
        <translation>Supprimer les lignes sélectionnées.</translation>
    </message>
    <message>
        <source>Insert column before selection</source>
        <translation>Insérer une colonne avant la sélection</translation>
    </message>
    <message>
        <source>Insert column after selection</source>
        <translation>Insérer une colonne après la sélection</translation>
    </message>
    <message>
        <source>Remove selected column(s)</source>
        <translation>Supprimer les colonnes sélectionnées</translation>
    </message>
</context>
<context>
    <name>XCsvSelectionPage</name>
    <message>
        <source>There are errors in the table. Click on the Edit button to fix them.</source>
        <translation>Le tableau contient des erreurs. Cliquez sur le bouton Modifier pour les corriger.</translation>
    </message>
    <message>
        <source>Click on the Edit button to make changes to the table.</source>
        <translation>Cliquez sur le bouton Modifier pour changer le tableau.</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Parcourir...</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Modifier</translation>
    </message>
    <message>
        <source>Start from an existing core collection</source>
        <translation>Partir d&apos;une collection noyau existante</translation>
    </message>
    <message>
        <source>Select file</source>
        <translation>Choisir un fichier</translation>
    </message>
    <message>
        <source>Preview and edit the input spreadsheet</source>
        <translation>Aperçu et modification du tableau d&apos;entrée</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>Spreadsheets %1</source>
        <translation>Feuilles de calcul %1</translation>
    </message>
</context>
<context>
    <name>XCsvTableModel</name>
    <message>
        <source>In the starting collection</source>
        <translation>Dans la collection de départ</translation>
    </message>
</context>
<context>
    <name>XCsvTableWidget</name>
    <message>
        <source>Rename column header</source>
        <translation>Renommer l&apos;en-tête de colonne</translation>
    </message>
    <message>
        <source>Rename row header</source>
        <translation>Renommer l&apos;en-tête de ligne</translation>
    </message>
    <message>
        <source>Select a new text for header</source>
        <translation>Saisissez un nouveau texte pour l&apos;en-tête</translation>
    </message>
</context>
<context>
    <name>XExactCore</name>
    <message>
        <source>The input table has no accessions.</source>
        <translation>Le tableau d&apos;entrée n&apos;a pas d&apos;accessions.</translation>
    </message>
    <message>
        <source>Different headers.</source>
        <translation>En-têtes différents.</translation>
    </message>
</context>
<context>
    <name>XFirstPage</name>
    <message>
        <source>Input from an existing file</source>
        <translation>Entrée depuis un fichier existant</translation>
    </message>
    <message>
        <source>Input data manually</source>
        <translation>Saisir les données à la main</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Accueil</translation>
    </message>
    <message>
        <source>Select the action you want to perform</source>
        <translation>Choisissez ce que vous voulez faire</translation>
    </message>
</context>
<context>
    <name>XGraphWidget</name>
    <message>
        <source>Save Graph As...</source>
        <translation>Enregistrer le graphique sous...</translation>
    </message>
    <message>
        <source>reported by the search</source>
        <translation>indiqués par la recherche</translation>
    </message>
    <message>
        <source>held by the core (smallest)</source>
        <translation>contenus dans le noyau (minimal)</translation>
    </message>
    <message>
        <source>at least this many accessions</source>
        <translation>au moins ce nombre d&apos;accessions</translation>
    </message>
    <message>
        <source>held by the core</source>
        <translation>contenus dans le noyau</translation>
    </message>
    <message>
        <source>Alleles against core size</source>
        <translation>Allèles selon la taille du noyau</translation>
    </message>
    <message>
        <source>the name must end in .png, .svg or .pdf</source>
        <translation>le nom doit finir par .png, .svg ou .pdf</translation>
    </message>
    <message>
        <source>the picture could not be drawn</source>
        <translation>l&apos;image n&apos;a pas pu être dessinée</translation>
    </message>
    <message>
        <source>PNG images %1</source>
        <translation>Images PNG %1</translation>
    </message>
    <message>
        <source>SVG drawings %1</source>
        <translation>Dessins SVG %1</translation>
    </message>
    <message>
        <source>PDF documents %1</source>
        <translation>Documents PDF %1</translation>
    </message>
    <message>
        <source>Save Graph As</source>
        <translation>Enregistrer le graphique sous</translation>
    </message>
</context>
<context>
    <name>XMainWindow</name>
    <message>
        <source>New...</source>
        <translation>Nouveau...</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Enregistrer...</translation>
    </message>
    <message>
        <source>Save As...</source>
        <translation>Enregistrer sous...</translation>
    </message>
    <message>
        <source>Import Workspace...</source>
        <translation>Importer un espace de travail...</translation>
    </message>
    <message>
        <source>Export Workspace...</source>
        <translation>Exporter l&apos;espace de travail...</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>About Qt</source>
        <translation>À propos de Qt</translation>
    </message>
    <message>
        <source>Ctrl+Shift+S</source>
        <translation>Ctrl+Shift+S</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aide</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Nouveau</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importer</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Exemple</translation>
    </message>
    <message>
        <source>Graph saved to %1</source>
        <translation>Graphique enregistré dans %1</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Accueil</translation>
    </message>
    <message>
        <source>Core collection</source>
        <translation>Collection noyau</translation>
    </message>
    <message>
        <source>Graph</source>
        <translation>Graphique</translation>
    </message>
    <message>
        <source>Input file</source>
        <translation>Fichier d&apos;entrée</translation>
    </message>
    <message>
        <source>Starting collection</source>
        <translation>Collection de départ</translation>
    </message>
    <message>
        <source>Open a file or create a new table</source>
        <translation>Ouvrir un fichier ou créer un nouveau tableau</translation>
    </message>
    <message>
        <source>Import an existing workspace</source>
        <translation>Importer un espace de travail existant</translation>
    </message>
    <message>
        <source>Show an input file sample</source>
        <translation>Voir un exemple de fichier d&apos;entrée</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Erreur</translation>
    </message>
    <message>
        <source>The input table has no accessions: it needs at least one row below its header row.</source>
        <translation>Le tableau d&apos;entrée n&apos;a pas d&apos;accessions : il lui faut au moins une ligne sous sa ligne d&apos;en-tête.</translation>
    </message>
    <message>
        <source>Working...</source>
        <translation>Calcul en cours...</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Interrompre</translation>
    </message>
    <message numerus="yes">
        <source>Working...
Searching cores of %1 of %n accessions</source>
        <translation>
            <numerusform>Calcul en cours...
Recherche des noyaux de %1 accession sur %n</numerusform>
            <numerusform>Calcul en cours...
Recherche des noyaux de %1 accessions sur %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Could not write %1: %2</source>
        <translation>Impossible d&apos;écrire %1 : %2</translation>
    </message>
    <message>
        <source>The core collection cannot be saved as %1: %2.</source>
        <translation>La collection noyau ne peut pas être enregistrée sous %1 : %2.</translation>
    </message>
    <message>
        <source>Nothing was written.</source>
        <translation>Rien n&apos;a été écrit.</translation>
    </message>
    <message>
        <source>Core collection saved to %1</source>
        <translation>Collection noyau enregistrée dans %1</translation>
    </message>
    <message>
        <source>Comma separated value files %1</source>
        <translation>Fichiers de valeurs séparées par des virgules %1</translation>
    </message>
    <message>
        <source>Microsoft Excel files %1</source>
        <translation>Fichiers Microsoft Excel %1</translation>
    </message>
    <message>
        <source>Excel workbooks %1</source>
        <translation>Classeurs Excel %1</translation>
    </message>
    <message>
        <source>Workspace files %1</source>
        <translation>Fichiers d&apos;espace de travail %1</translation>
    </message>
    <message>
        <source>Export Workspace</source>
        <translation>Exporter l&apos;espace de travail</translation>
    </message>
    <message>
        <source>Workspace exported to %1</source>
        <translation>Espace de travail exporté dans %1</translation>
    </message>
    <message>
        <source>Import Workspace</source>
        <translation>Importer un espace de travail</translation>
    </message>
    <message>
        <source>The file %1 cannot be imported: %2. The analysis shown stays as it is.</source>
        <translation>Le fichier %1 ne peut pas être importé : %2. L&apos;analyse affichée reste telle quelle.</translation>
    </message>
    <message>
        <source>The file %1 is not a valid workspace file: %2. The analysis shown stays as it is.</source>
        <translation>Le fichier %1 n&apos;est pas un fichier d&apos;espace de travail valide : %2. L&apos;analyse affichée reste telle quelle.</translation>
    </message>
    <message>
        <source>Imported %1</source>
        <translation>%1 importé</translation>
    </message>
</context>
<context>
    <name>XManualEditingPage</name>
    <message>
        <source>Click on the button to create a table using the values above.</source>
        <translation>Cliquez sur le bouton pour créer un tableau avec les valeurs ci-dessus.</translation>
    </message>
    <message>
        <source>Create</source>
        <translation>Créer</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Modifier</translation>
    </message>
    <message>
        <source>Manual editing</source>
        <translation>Saisie manuelle</translation>
    </message>
    <message>
        <source>Create and edit a new table</source>
        <translation>Créer et modifier un nouveau tableau</translation>
    </message>
    <message>
        <source>Rows</source>
        <translation>Lignes</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Colonnes</translation>
    </message>
    <message>
        <source>Fill character</source>
        <translation>Caractère de remplissage</translation>
    </message>
</context>
<context>
    <name>XProgressBar</name>
    <message numerus="yes">
        <source>Searching cores of %1 of %n accessions</source>
        <translation>
            <numerusform>Recherche des noyaux de %1 accession sur %n</numerusform>
            <numerusform>Recherche des noyaux de %1 accessions sur %n</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>XSample</name>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>&lt;b&gt;Rows&lt;/b&gt;: Accessions</source>
        <translation>&lt;b&gt;Lignes&lt;/b&gt; : accessions</translation>
    </message>
    <message>
        <source>&lt;b&gt;Columns&lt;/b&gt;: Microsatellite markers</source>
        <translation>&lt;b&gt;Colonnes&lt;/b&gt; : marqueurs microsatellites</translation>
    </message>
    <message>
        <source>Comma-separated values (&lt;b&gt;.csv&lt;/b&gt;) file</source>
        <translation>Fichier de valeurs séparées par des virgules (&lt;b&gt;.csv&lt;/b&gt;)</translation>
    </message>
    <message>
        <source>Microsoft Excel (&lt;b&gt;.xls&lt;/b&gt;) file</source>
        <translation>Fichier Microsoft Excel (&lt;b&gt;.xls&lt;/b&gt;)</translation>
    </message>
</context>
<context>
    <name>XSaveFile</name>
    <message>
        <source>it is a folder</source>
        <translation>c&apos;est un dossier</translation>
    </message>
    <message>
        <source>it exists and is not a regular file</source>
        <translation>il existe et n&apos;est pas un fichier ordinaire</translation>
    </message>
</context>
<context>
    <name>XSearchCommand</name>
    <message>
        <source>The run ended without a result.</source>
        <translation>L&apos;exécution s&apos;est terminée sans résultat.</translation>
    </message>
    <message>
        <source>%1: could not be written: %2</source>
        <translation>%1 : n&apos;a pas pu être écrit : %2</translation>
    </message>
</context>
<context>
    <name>XSettingsPage</name>
    <message>
        <source>Reproducible (randomised, repeatable by seed)</source>
        <translation>Reproductible (aléatoire, répétable par graine)</translation>
    </message>
    <message>
        <source>Smallest cores (exact)</source>
        <translation>Noyaux minimaux (exacte)</translation>
    </message>
    <message>
        <source>Algorithm Settings</source>
        <translation>Réglages de l&apos;algorithme</translation>
    </message>
    <message>
        <source>Adjust the algorithm&apos;s parameters</source>
        <translation>Ajustez les paramètres de l&apos;algorithme</translation>
    </message>
    <message>
        <source>Iterations</source>
        <translation>Itérations</translation>
    </message>
    <message>
        <source>Rand seed (0 = autogenerated)</source>
        <translation>Graine aléatoire (0 = automatique)</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Recherche</translation>
    </message>
    <message>
        <source>Time budget (s)</source>
        <translation>Temps maximal (s)</translation>
    </message>
</context>
<context>
    <name>XSpreadsheet</name>
    <message>
        <source>The table has no allele columns: is it separated by semicolons or tabs?</source>
        <translation>Le tableau n&apos;a pas de colonnes d&apos;allèles : est-il séparé par des points-virgules ou des tabulations ?</translation>
    </message>
    <message>
        <source>No line has as many fields as the header row (%1): is there a trailing comma, or a comma in quotes, in the header?</source>
        <translation>Aucune ligne n&apos;a autant de champs que la ligne d&apos;en-tête (%1) : l&apos;en-tête a-t-il une virgule finale, ou une virgule entre guillemets ?</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Le fichier est vide.</translation>
    </message>
    <message>
        <source>The table has no accessions: it needs at least one row below its header row.</source>
        <translation>Le tableau n&apos;a pas d&apos;accessions : il lui faut au moins une ligne sous sa ligne d&apos;en-tête.</translation>
    </message>
    <message>
        <source>the table has %1 columns, and an %2 worksheet holds %3</source>
        <translation>le tableau a %1 colonnes, et une feuille %2 en contient %3</translation>
    </message>
    <message>
        <source>the table has %1 rows, and an %2 worksheet holds %3</source>
        <translation>le tableau a %1 lignes, et une feuille %2 en contient %3</translation>
    </message>
    <message>
        <source>the table does not fit in an .xls worksheet</source>
        <translation>le tableau ne tient pas dans une feuille .xls</translation>
    </message>
    <message>
        <source>the workbook could not be put together</source>
        <translation>le classeur n&apos;a pas pu être assemblé</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: cell at row %1 and column %2 does not appear to be a valid string or number.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %3 : la cellule de la ligne %1 et de la colonne %2 ne semble pas être un texte ou un nombre valide.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: the cell at row %1 and column %2 holds more than %4 characters, more than a spreadsheet cell holds.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %3 : la cellule de la ligne %1 et de la colonne %2 contient plus de %4 caractères, plus que n&apos;en contient une cellule de feuille de calcul.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: by the cell at row %1 and column %2, the cells of the first worksheet hold more than %4 characters of text, more than Vireon reads.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %3 : à la cellule de la ligne %1 et de la colonne %2, les cellules de la première feuille contiennent plus de %4 caractères de texte, plus que Vireon n&apos;en lit.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the file cannot be read as a workbook.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : le fichier ne peut pas être lu comme classeur.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the workbook is protected by a password.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : le classeur est protégé par un mot de passe.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the workbook has no worksheet.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : le classeur n&apos;a aucune feuille.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: the first worksheet reaches row %1 and column %2, but fewer than one cell in a hundred of that holds something. Copy the table to a new worksheet.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %3 : la première feuille va jusqu&apos;à la ligne %1 et la colonne %2, mais moins d&apos;une cellule sur cent contient quelque chose. Copiez le tableau dans une nouvelle feuille.</translation>
    </message>
    <message>
        <source>Error while parsing the %3 file: the first worksheet reaches row %1 and column %2, more cells than Vireon reads.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %3 : la première feuille va jusqu&apos;à la ligne %1 et la colonne %2, plus de cellules que Vireon n&apos;en lit.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: a part of the workbook would unpack to more than %2 MB; it was not unpacked.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : une partie du classeur occuperait plus de %2 Mo une fois décompressée ; elle n&apos;a pas été décompressée.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the file is empty.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : le fichier est vide.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the file is not a %1 workbook but another kind of file.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : le fichier n&apos;est pas un classeur %1 mais un autre type de fichier.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the first worksheet is empty.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : la première feuille est vide.</translation>
    </message>
    <message>
        <source>The %1 file cannot be read: the workbook reader could not be started.</source>
        <translation>Le fichier %1 ne peut pas être lu : le lecteur de classeurs n&apos;a pas pu être lancé.</translation>
    </message>
    <message>
        <source>Error while parsing the %1 file: the workbook reader stopped on this file.</source>
        <translation>Erreur lors de l&apos;analyse du fichier %1 : le lecteur de classeurs s&apos;est arrêté sur ce fichier.</translation>
    </message>
    <message>
        <source>the table does not fit in an .xlsx worksheet</source>
        <translation>le tableau ne tient pas dans une feuille .xlsx</translation>
    </message>
    <message>
        <source>the workbook could not be put together: %1</source>
        <translation>le classeur n&apos;a pas pu être assemblé : %1</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 ou %2</translation>
    </message>
    <message>
        <source>The file you selected is not a %1 file.</source>
        <translation>Le fichier choisi n&apos;est pas un fichier %1.</translation>
    </message>
</context>
<context>
    <name>XWizard</name>
    <message>
        <source>Discard Tables</source>
        <translation>Abandonner les tableaux</translation>
    </message>
    <message>
        <source>Discard the tables of this analysis?</source>
        <translation>Abandonner les tableaux de cette analyse ?</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>XWorkspace</name>
    <message>
        <source>the number of fields differs from the header row&apos;s</source>
        <translation>le nombre de champs diffère de celui de la ligne d&apos;en-tête</translation>
    </message>
    <message>
        <source>the table has no allele columns</source>
        <translation>le tableau n&apos;a pas de colonnes d&apos;allèles</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>ligne %1 : %2</translation>
    </message>
    <message>
        <source>it does not hold a whole analysis</source>
        <translation>il ne contient pas une analyse entière</translation>
    </message>
    <message>
        <source>the input table has no accessions</source>
        <translation>le tableau d&apos;entrée n&apos;a pas d&apos;accessions</translation>
    </message>
    <message>
        <source>the starting collection&apos;s header row differs from the input table&apos;s</source>
        <translation>la ligne d&apos;en-tête de la collection de départ diffère de celle du tableau d&apos;entrée</translation>
    </message>
    <message>
        <source>a result line holds something other than row numbers and an allele count of 0 or more</source>
        <translation>une ligne du résultat contient autre chose que des numéros de ligne et un nombre d&apos;allèles de 0 ou plus</translation>
    </message>
    <message>
        <source>the result has %1 lines, and a search writes 100</source>
        <translation>le résultat a %1 lignes, et une recherche en écrit 100</translation>
    </message>
    <message>
        <source>the core lists %1 accessions, and the input table has %2</source>
        <translation>le noyau liste %1 accessions, et le tableau d&apos;entrée en a %2</translation>
    </message>
    <message>
        <source>row %1 is not an accession of the input table, which has %2</source>
        <translation>la ligne %1 n&apos;est pas une accession du tableau d&apos;entrée, qui en a %2</translation>
    </message>
</context>
<context>
    <name>XWorkspaceCheck</name>
    <message>
        <source>%1 is %2, where %3 belongs</source>
        <translation>%1 vaut %2, là où il faut %3</translation>
    </message>
    <message>
        <source>the search %1 is none that Vireon knows (reproducible or exact)</source>
        <translation>la recherche %1 n&apos;est aucune de celles que Vireon connaît (reproducible ou exact)</translation>
    </message>
    <message>
        <source>HasSource is %1, where true or false belongs</source>
        <translation>HasSource vaut %1, là où il faut true ou false</translation>
    </message>
    <message>
        <source>a whole number from 1 to 100</source>
        <translation>un nombre entier de 1 à 100</translation>
    </message>
    <message>
        <source>a whole number of at least 1</source>
        <translation>un nombre entier d&apos;au moins 1</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>un nombre entier</translation>
    </message>
    <message>
        <source>a whole number of 0 or more</source>
        <translation>un nombre entier de 0 ou plus</translation>
    </message>
    <message>
        <source>Seconds is %1, where a number of 0 or more belongs</source>
        <translation>Seconds vaut %1, là où il faut un nombre de 0 ou plus</translation>
    </message>
    <message>
        <source>lower bounds come from the exact search, and this result is the reproducible search&apos;s</source>
        <translation>les bornes inférieures viennent de la recherche exacte, et ce résultat est celui de la recherche reproductible</translation>
    </message>
    <message>
        <source>%1 under marker %2 is not an allele (a whole number of 0 or more, or * for a missing one)</source>
        <translation>%1 sous le marqueur %2 n&apos;est pas un allèle (un nombre entier de 0 ou plus, ou * pour un allèle manquant)</translation>
    </message>
    <message>
        <source>the exact search&apos;s lower bounds are missing</source>
        <translation>les bornes inférieures de la recherche exacte manquent</translation>
    </message>
    <message>
        <source>there are %1 lower bounds, and the exact search writes one for each of the 100 shares</source>
        <translation>il y a %1 bornes inférieures, et la recherche exacte en écrit une pour chacune des 100 parts</translation>
    </message>
    <message>
        <source>the lower bound %1 for %2 % is not a whole number from 0 to the core&apos;s size, %3</source>
        <translation>la borne inférieure %1 pour %2 % n&apos;est pas un nombre entier de 0 à la taille du noyau, %3</translation>
    </message>
    <message>
        <source>the count %1 is more than the %2 alleles the tables hold</source>
        <translation>le compte %1 dépasse les %2 allèles que contiennent les tableaux</translation>
    </message>
    <message>
        <source>the core is empty, so it holds the starting collection&apos;s %1 alleles, not %2</source>
        <translation>le noyau est vide, il contient donc les %1 allèles de la collection de départ, et non %2</translation>
    </message>
    <message>
        <source>the count %1 falls below the %2 of the share before it, and a search&apos;s counts never fall</source>
        <translation>le compte %1 descend sous le %2 de la part précédente, et les comptes d&apos;une recherche ne descendent jamais</translation>
    </message>
    <message>
        <source>the core of %1 accessions is smaller than the %2 of the share before it, and a search&apos;s cores never shrink</source>
        <translation>le noyau de %1 accessions est plus petit que celui de %2 de la part précédente, et les noyaux d&apos;une recherche ne rétrécissent jamais</translation>
    </message>
    <message>
        <source>the core differs from the one before it in the same number of accessions, and the search keeps one core for each size</source>
        <translation>le noyau diffère du précédent au même nombre d&apos;accessions, et la recherche garde un noyau par taille</translation>
    </message>
    <message>
        <source>the count %1 falls short of %2 % of the %3 alleles, which the core for that share reaches</source>
        <translation>le compte %1 n&apos;atteint pas %2 % des %3 allèles, ce que le noyau de cette part atteint</translation>
    </message>
    <message>
        <source>the core lists a row twice, and the exact search lists each row once</source>
        <translation>le noyau liste une ligne deux fois, et la recherche exacte liste chaque ligne une fois</translation>
    </message>
    <message>
        <source>the count %1 differs from the %2 alleles the core holds with the starting collection</source>
        <translation>le compte %1 diffère des %2 allèles que contient le noyau avec la collection de départ</translation>
    </message>
    <message>
        <source>the count %1 differs from the %2 alleles the core holds</source>
        <translation>le compte %1 diffère des %2 allèles que contient le noyau</translation>
    </message>
</context>
<context>
    <name>XWorkspaceCommand</name>
    <message>
        <source>%1: not a valid workspace file: %2</source>
        <translation>%1 : n&apos;est pas un fichier d&apos;espace de travail valide : %2</translation>
    </message>
    <message>
        <source>not recorded</source>
        <translation>non enregistré</translation>
    </message>
    <message>
        <source>%1: could not be written: %2</source>
        <translation>%1 : n&apos;a pas pu être écrit : %2</translation>
    </message>
</context>
</TS>
